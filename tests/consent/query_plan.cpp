#include "consent/query_plan.h"

namespace qbx::consent {
namespace {

QueryOptions MakeOptions(RandomSource& random) {
  QueryOptions options;
  const QDate first = QDate(2024, 1, 1).addDays(random.Between(0, 900));
  const QDate second = first.addDays(random.Between(30, 500));
  const bool reversed = random.Chance(10);
  options.dteDate = {reversed ? second : first, reversed ? first : second};
  options.dteDateHasText = {true, true};
  options.txtCriteria = QString::number(random.Between(1, 30));
  options.txtCriteriaStart = QString::number(random.Chance(70) ? 1 : random.Between(1, 10));
  static const QStringList kMakes = {QStringLiteral("Ford"), QStringLiteral("Audi, Ford"),
                                     QStringLiteral("bmw,Citroën"), QStringLiteral("Lada")};
  options.txtMakes = random.Pick(kMakes);
  options.cmbReminder = random.Between(0, 5);
  options.cmbType = random.Pick(CampaignTypes());
  return options;
}

void AddVehicleFilters(RandomSource& random, Filters& filters) {
  filters.chkFilter[kFilterMileage] = random.Chance(25);
  filters.cmbFilter[kFilterMileage] = random.Between(-1, 2);
  filters.txtMileage = {QString::number(random.Between(0, 6) * 10000), QString::number(random.Between(6, 12) * 10000)};
  filters.chkFilter[kFilterYear] = random.Chance(25);
  filters.cmbFilter[kFilterYear] = random.Between(-1, 3);
  filters.txtYear = {QString::number(random.Between(2008, 2014)), QString::number(random.Between(2014, 2020))};
  filters.chkFilter[kFilterModel] = random.Chance(15);
  filters.txtModel = random.Pick(QStringList{QStringLiteral("focus"), QStringLiteral(" A4 "), QStringLiteral("%")});
}

Filters MakeFilters(RandomSource& random, const World& world, bool vehiclesToo) {
  Filters filters;
  filters.chkIncludeOptedOut = random.Chance(20);
  filters.chkFilter[kFilterNoMarketing] = random.Chance(25);
  filters.chkFilter[kFilterCustomerType] = random.Chance(20);
  filters.cmbFilter[kFilterCustomerType] = random.Between(-1, 1);
  filters.cmbData1 = random.Chance(15) ? QString() : random.Pick(world.types).toUpper();
  filters.chkFilter[kFilterEnquirySource] = random.Chance(20);
  filters.cmbFilter[kFilterEnquirySource] = random.Between(-1, 1);
  filters.cmbData2 = random.Chance(15) ? QString() : random.Pick(world.sources);
  if (vehiclesToo && random.Chance(40)) AddVehicleFilters(random, filters);
  return filters;
}

}  // namespace

QueryPlan MakeQueryPlan(RandomSource& random, const World& world) {
  static constexpr int kQueries[] = {kAllCustomers,    kAllCustomers,  kAllCustomers,    kLapsedCustomers,
                                     kRecentCustomers, kTopCustomers,  kBottomCustomers, kAllVehicles,
                                     kAllVehicles,     kSpecificMakes, kReminderDate};
  QueryPlan plan;
  plan.query = random.Pick(kQueries);
  plan.options = MakeOptions(random);
  const bool ranking = plan.query == kTopCustomers || plan.query == kBottomCustomers;
  plan.filters = MakeFilters(random, world, !ranking);
  plan.refreshFirst = random.Chance(20);
  return plan;
}

SendMethods MakeSendMethods(RandomSource& random) {
  const auto rule = [&random](const QStringList& rules) {
    return random.Chance(60) ? 0 : random.Between(-1, static_cast<int>(rules.size()) - 1);
  };
  return {.sms = rule(SmsRules()), .email = rule(EmailRules()), .letter = random.Chance(35) ? -1 : rule(LetterRules())};
}

QString Describe(const QueryPlan& plan) {
  QStringList words{FindQueryNode(plan.query, false)->text};
  const QueryOptions& o = plan.options;
  if (plan.query == kTopCustomers || plan.query == kBottomCustomers)
    words += o.txtCriteria + QStringLiteral(" from ") + o.txtCriteriaStart;
  if (plan.query == kSpecificMakes) words += o.txtMakes;
  if (plan.query == kReminderDate) words += QStringLiteral("reminder %1").arg(o.cmbReminder + 1);
  words += o.dteDate[0].toString(Qt::ISODate) + QStringLiteral(" to ") + o.dteDate[1].toString(Qt::ISODate);
  const Filters& f = plan.filters;
  if (f.chkIncludeOptedOut) words += QStringLiteral("Include Opted Out");
  if (f.chkFilter[kFilterNoMarketing]) words += QStringLiteral("No Marketing too");
  const auto condition = [&](FilterIndex filter, const QString& name, const QString& values) {
    if (f.chkFilter[filter]) words += QStringLiteral("%1 %2 %3").arg(name).arg(f.cmbFilter[filter]).arg(values);
  };
  condition(kFilterCustomerType, QStringLiteral("type"), f.cmbData1);
  condition(kFilterEnquirySource, QStringLiteral("source"), f.cmbData2);
  condition(kFilterMileage, QStringLiteral("mileage"), f.txtMileage[0] + u'-' + f.txtMileage[1]);
  condition(kFilterYear, QStringLiteral("year"), f.txtYear[0] + u'-' + f.txtYear[1]);
  if (f.chkFilter[kFilterModel]) words += QStringLiteral("model '") + f.txtModel + u'\'';
  return words.join(QStringLiteral(", "));
}

QString Describe(const SendMethods& methods) {
  return QStringLiteral("sms=%1 email=%2 letter=%3").arg(methods.sms).arg(methods.email).arg(methods.letter);
}

}  // namespace qbx::consent
