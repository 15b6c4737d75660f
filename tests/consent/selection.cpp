#include "consent/selection.h"

#include <algorithm>

namespace qbx::consent {
namespace {

/// The range between two dates in either order, both days included.
struct Period {
  QDate first, last;
  explicit Period(const QueryOptions& options)
      : first(std::min(options.dteDate[0], options.dteDate[1])),
        last(std::max(options.dteDate[0], options.dteDate[1])) {}
  [[nodiscard]] bool Holds(const QDate& day) const { return day.isValid() && day >= first && day <= last; }
};

class Selector {
 public:
  Selector(const World& world, const QueryPlan& plan, bool filtered, const Settings& settings)
      : world_(world), plan_(plan), filtered_(filtered), settings_(settings), period_(plan.options) {}

  std::vector<Picked> Run() {
    std::vector<Picked> picked;
    const std::vector<int> ranked = Ranked();
    for (const auto& [key, customer] : world_.customers) {
      if (!MayBeContacted(customer) || !Fits(customer)) continue;
      if (IsRanking() && std::find(ranked.begin(), ranked.end(), key) == ranked.end()) continue;
      if (!OverVehicles()) {
        picked.push_back({&customer, nullptr, QDate()});
        continue;
      }
      for (const Vehicle& vehicle : world_.vehicles)
        if (vehicle.customer == key && Fits(vehicle)) picked.push_back({&customer, &vehicle, Due(vehicle)});
    }
    return picked;
  }

  Losses Count() {
    Losses losses;
    for (FilterIndex filter : {kFilterCustomerType, kFilterEnquirySource, kFilterMileage, kFilterYear, kFilterModel})
      if (Ticked(filter)) losses.filters[filter] = 0;
    const std::vector<int> ranked = Ranked();
    for (const auto& [key, customer] : world_.customers) {
      if (!FitsInvoices(key)) continue;
      const bool place = std::find(ranked.begin(), ranked.end(), key) != ranked.end();
      if (IsRanking() && !place && (HostAllows(customer) || !InvoicedThen(key))) continue;
      if (!OverVehicles()) CountRow(customer, nullptr, losses);
      for (const Vehicle& vehicle : world_.vehicles)
        if (OverVehicles() && vehicle.customer == key && IsOfQuery(vehicle)) CountRow(customer, &vehicle, losses);
    }
    return losses;
  }

 private:
  void CountRow(const Customer& customer, const Vehicle* vehicle, Losses& losses) const {
    if (customer.consent.value_or(0) == 2 && !plan_.filters.chkIncludeOptedOut) {
      ++losses.optedOut;
      return;
    }
    if (customer.noMarketing && !Ticked(kFilterNoMarketing)) {
      ++losses.noMarketing;
      return;
    }
    ++losses.candidates;
    if (!FitsType(customer))
      ++losses.filters[kFilterCustomerType];
    else if (!FitsSource(customer))
      ++losses.filters[kFilterEnquirySource];
    else if (vehicle != nullptr && !FitsMileage(*vehicle))
      ++losses.filters[kFilterMileage];
    else if (vehicle != nullptr && !FitsYear(*vehicle))
      ++losses.filters[kFilterYear];
    else if (vehicle != nullptr && !FitsModel(*vehicle))
      ++losses.filters[kFilterModel];
    else if (!MayBeContacted(customer))
      ++losses.withoutConsent;
  }
  [[nodiscard]] bool InvoicedThen(int customer) const {
    return std::any_of(world_.invoices.begin(), world_.invoices.end(), [&](const Invoice& invoice) {
      return invoice.customer == customer && invoice.kind == 0 && period_.Holds(invoice.day);
    });
  }
  [[nodiscard]] bool Ticked(FilterIndex filter) const { return filtered_ && plan_.filters.chkFilter[filter]; }
  [[nodiscard]] bool IsRanking() const { return plan_.query == kTopCustomers || plan_.query == kBottomCustomers; }
  [[nodiscard]] bool OverVehicles() const {
    return plan_.query > kVehicleGroup || Ticked(kFilterMileage) || Ticked(kFilterYear) || Ticked(kFilterModel);
  }

  /// The customers that the host leaves out by itself.
  [[nodiscard]] bool HostAllows(const Customer& customer) const {
    if (customer.noMarketing && !Ticked(kFilterNoMarketing)) return false;
    return customer.consent.value_or(0) != 2 || plan_.filters.chkIncludeOptedOut;
  }
  [[nodiscard]] bool MayBeContacted(const Customer& customer) const {
    if (!HostAllows(customer)) return false;
    if (!settings_.onlyOptedIn) return true;
    if (customer.consent != 1) return false;
    return !settings_.usingPlatform || customer.canSms == 1 || customer.canEmail == 1 || customer.canLetter == 1;
  }

  [[nodiscard]] bool Fits(const Customer& customer) const {
    return FitsType(customer) && FitsSource(customer) && FitsInvoices(customer.key);
  }
  [[nodiscard]] bool FitsType(const Customer& customer) const {
    const QString type = customer.type > 0 ? world_.types[customer.type - 1] : QString();
    return FitsList(kFilterCustomerType, type, plan_.filters.cmbData1);
  }
  [[nodiscard]] bool FitsSource(const Customer& customer) const {
    const QString source = customer.source > 0 ? world_.sources[customer.source - 1] : QString();
    return FitsList(kFilterEnquirySource, source, plan_.filters.cmbData2);
  }
  [[nodiscard]] bool FitsList(FilterIndex filter, const QString& has, const QString& wanted) const {
    if (!Ticked(filter) || plan_.filters.cmbFilter[filter] < 0) return true;
    return Same(has, wanted) == (plan_.filters.cmbFilter[filter] == 0);
  }
  [[nodiscard]] bool FitsInvoices(int customer) const {
    if (plan_.query != kLapsedCustomers && plan_.query != kRecentCustomers) return true;
    bool before = false;
    bool inside = false;
    for (const Invoice& invoice : world_.invoices) {
      if (invoice.customer != customer || invoice.kind != 0) continue;
      before = before || invoice.day < period_.first;
      inside = inside || period_.Holds(invoice.day);
    }
    return plan_.query == kLapsedCustomers ? before && !inside : inside;
  }

  [[nodiscard]] bool Fits(const Vehicle& vehicle) const {
    return IsOfQuery(vehicle) && FitsMileage(vehicle) && FitsYear(vehicle) && FitsModel(vehicle);
  }
  [[nodiscard]] bool IsOfQuery(const Vehicle& vehicle) const {
    if (plan_.query == kSpecificMakes && !HasMake(vehicle)) return false;
    return plan_.query != kReminderDate || period_.Holds(Due(vehicle));
  }
  [[nodiscard]] bool HasMake(const Vehicle& vehicle) const {
    if (!vehicle.make) return false;
    for (const QString& make : plan_.options.txtMakes.split(QLatin1Char(',')))
      if (Same(*vehicle.make, WithoutBlanksAround(make))) return true;
    return false;
  }
  [[nodiscard]] QDate Due(const Vehicle& vehicle) const {
    return plan_.query == kReminderDate ? vehicle.due[static_cast<size_t>(plan_.options.cmbReminder)] : QDate();
  }
  [[nodiscard]] bool FitsMileage(const Vehicle& vehicle) const {
    const int condition = plan_.filters.cmbFilter[kFilterMileage];
    if (!Ticked(kFilterMileage) || condition < 0) return true;
    if (!vehicle.mileage) return false;
    const int low = plan_.filters.txtMileage[0].toInt();
    const int high = plan_.filters.txtMileage[1].toInt();
    switch (condition) {
      case 0:
        return *vehicle.mileage > low;
      case 1:
        return *vehicle.mileage < low;
      default:
        return *vehicle.mileage >= low && *vehicle.mileage <= high;
    }
  }
  [[nodiscard]] bool FitsYear(const Vehicle& vehicle) const {
    const int condition = plan_.filters.cmbFilter[kFilterYear];
    if (!Ticked(kFilterYear) || condition < 0) return true;
    const int year = vehicle.year.value_or(0);
    if (year == 0) return false;
    const int low = plan_.filters.txtYear[0].toInt();
    const int high = plan_.filters.txtYear[1].toInt();
    switch (condition) {
      case 0:
        return year == low;
      case 1:
        return year > low;
      case 2:
        return year < low;
      default:
        return year >= low && year <= high;
    }
  }
  [[nodiscard]] bool FitsModel(const Vehicle& vehicle) const {
    if (!Ticked(kFilterModel)) return true;
    return Plain(vehicle.model).contains(WithoutBlanksAround(plan_.filters.txtModel), Qt::CaseInsensitive);
  }

  /// The places of a ranking of all customers that the host allows.
  [[nodiscard]] std::vector<int> Ranked() const {
    if (!IsRanking()) return {};
    std::map<int, qint64> spent;
    for (const Invoice& invoice : world_.invoices) {
      const Customer* customer = world_.Find(invoice.customer);
      if (invoice.kind != 0 || customer == nullptr || !HostAllows(*customer) || !period_.Holds(invoice.day)) continue;
      spent[invoice.customer] += invoice.pence;
    }
    std::vector<std::pair<qint64, int>> places;
    places.reserve(spent.size());
    for (const auto& [customer, pence] : spent)
      places.emplace_back(plan_.query == kTopCustomers ? -pence : pence, customer);
    std::sort(places.begin(), places.end());
    const size_t first = plan_.options.txtCriteriaStart.toUInt() - 1;
    std::vector<int> ranked;
    for (size_t i = first; i < places.size() && i - first < plan_.options.txtCriteria.toUInt(); ++i)
      ranked.push_back(places[i].second);
    return ranked;
  }

  const World& world_;
  const QueryPlan& plan_;
  bool filtered_;
  const Settings& settings_;
  Period period_;
};

}  // namespace

std::vector<Picked> Select(const World& world, const QueryPlan& plan, bool filtered, const Settings& settings) {
  return Selector(world, plan, filtered, settings).Run();
}

Losses CountLosses(const World& world, const QueryPlan& plan, bool filtered, const Settings& settings) {
  return Selector(world, plan, filtered, settings).Count();
}

}  // namespace qbx::consent
