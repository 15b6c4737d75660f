#include "consent/command_lines.h"

namespace qbx::consent {

void KeepToCommandLine(QueryPlan& plan) {
  Filters& filters = plan.filters;
  for (const FilterIndex filter : {kFilterCustomerType, kFilterEnquirySource, kFilterMileage, kFilterYear})
    if (filters.cmbFilter[filter] < 0) filters.chkFilter[filter] = false;
  if (filters.cmbData1.isEmpty()) filters.chkFilter[kFilterCustomerType] = false;
  if (filters.cmbData2.isEmpty()) filters.chkFilter[kFilterEnquirySource] = false;
}

QStringList QueryWords(const QueryPlan& plan, const MailshotTemplates& templates) {
  const QueryOptions& options = plan.options;
  const Filters& filters = plan.filters;
  QStringList words{QStringLiteral("query")};
  const auto add = [&words](const char* flag, const QString& value) { words << QLatin1String(flag) << value; };
  add("--query", FindQueryNode(plan.query, false)->text);
  add("--from", options.dteDate[0].toString(Qt::ISODate));
  add("--to", options.dteDate[1].toString(Qt::ISODate));
  add("--records", options.txtCriteria);
  add("--start", options.txtCriteriaStart);
  add("--makes", options.txtMakes);
  add("--reminder", QString::number(options.cmbReminder + 1));
  add("--campaign-type", options.cmbType);
  add("--no-marketing", filters.chkFilter[kFilterNoMarketing] ? QStringLiteral("on") : QStringLiteral("off"));
  const auto condition = [&](const char* flag, FilterIndex filter, std::initializer_list<const char*> conditions,
                             const QString& value, const QString& between) {
    if (!filters.chkFilter[filter]) return;
    const QString word = QLatin1String(std::data(conditions)[filters.cmbFilter[filter]]);
    add(flag, word + u':' + value + (word == QStringLiteral("between") ? u',' + between : QString()));
  };
  condition("--cust-type", kFilterCustomerType, {"is", "is-not"}, filters.cmbData1, {});
  condition("--source", kFilterEnquirySource, {"is", "is-not"}, filters.cmbData2, {});
  condition("--mileage", kFilterMileage, {"higher", "less", "between"}, filters.txtMileage[0], filters.txtMileage[1]);
  condition("--year", kFilterYear, {"is", "after", "before", "between"}, filters.txtYear[0], filters.txtYear[1]);
  if (filters.chkFilter[kFilterModel]) add("--model", filters.txtModel);
  if (filters.chkIncludeOptedOut) words << QStringLiteral("--include-opted-out");
  add("--sms", templates.sms);
  add("--subject", templates.emailSubject);
  add("--body", templates.emailBody);
  add("--save", QStringLiteral("Round"));
  return words;
}

QStringList SendByWords(const SendMethods& methods) {
  QStringList words;
  const auto add = [&words](const char* channel, int rule) {
    if (rule >= 0) words << QStringLiteral("%1=%2").arg(QLatin1String(channel)).arg(rule);
  };
  add("sms", methods.sms);
  add("email", methods.email);
  add("letter", methods.letter);
  if (!words.isEmpty()) words.prepend(QStringLiteral("--send-by"));
  return words;
}

}  // namespace qbx::consent
