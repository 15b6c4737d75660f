// What step 2 of the wizard holds: the filters, their rules, and the parameters that they become.

#include "queries/filters.h"

#include "queries/plain_messages.h"
#include "settings/options.h"
#include "util/text.h"

namespace qbx {

namespace {

constexpr int kLongestListValue = 50;
constexpr int kMileageBetween = 2;
constexpr int kYearBetween = 3;

class Adder {
 public:
  explicit Adder(std::vector<NamedValue>& parameters) : parameters_(parameters) {}
  void operator()(const char* name, const Value& value) { parameters_.push_back({QString::fromLatin1(name), value}); }

 private:
  std::vector<NamedValue>& parameters_;
};

void AddMileage(const Filters& filters, Adder& add) {
  const double first = LeadingNumber(filters.txtMileage[0]);
  add("@FilterMileage", 1);
  switch (filters.cmbFilter[kFilterMileage]) {
    case 0:  // Higher Than
      return add("@FromMileage", first);
    case 1:  // Less Than
      return add("@ToMileage", first);
    case kMileageBetween:
      add("@FromMileage", first);
      return add("@ToMileage", LeadingNumber(filters.txtMileage[1]));
    default:
      return;
  }
}

// The host's lower bound excludes the year itself, which is why bounds are moved by one.
void AddYear(const Filters& filters, Adder& add) {
  const double first = LeadingNumber(filters.txtYear[0]);
  add("@FilterYear", 1);
  switch (filters.cmbFilter[kFilterYear]) {
    case 0:  // Is
      add("@FromYear", first - 1);
      return add("@ToYear", first);
    case 1:  // After
      return add("@FromYear", first);
    case 2:  // Before
      return add("@ToYear", first - 1);
    case kYearBetween:
      add("@FromYear", first - 1);
      return add("@ToYear", LeadingNumber(filters.txtYear[1]) + 1);
    default:
      return;
  }
}

}  // namespace

bool Filters::Ticked(FilterIndex filter) const {
  return chkFilter[filter] && (filter != kFilterMileage || mileageVisible);
}

bool Filters::AnyVehicleFilter() const {
  return Ticked(kFilterMileage) || Ticked(kFilterYear) || Ticked(kFilterModel);
}

FilterCaptions MakeFilterCaptions(bool boatEdition) {
  const QString vehicle = boatEdition ? QStringLiteral("Boat") : QStringLiteral("Vehicle");
  return {
      .fraVehicleFilter = vehicle + QLatin1String(" Filter"),
      .chkFilter = {QStringLiteral("Include customers who have selected No Marketing"), QStringLiteral("Customer Type"),
                    QStringLiteral("Enquiry Source"),
                    QLatin1String("Last known ") + (boatEdition ? QLatin1String("Hours") : QLatin1String("Mileage")),
                    QStringLiteral("Year of Manufacture"), vehicle + QLatin1String(" Model is:")}};
}

QStringList FilterConditions(FilterIndex filter) {
  switch (filter) {
    case kFilterCustomerType:
      return {QStringLiteral("Type Is"), QStringLiteral("Type Is Not")};
    case kFilterEnquirySource:
      return {QStringLiteral("Source Is"), QStringLiteral("Source Is Not")};
    case kFilterMileage:
      return {QStringLiteral("Higher Than"), QStringLiteral("Less Than"), QStringLiteral("Between")};
    case kFilterYear:
      return {QStringLiteral("Is"), QStringLiteral("After"), QStringLiteral("Before"), QStringLiteral("Between")};
    default:
      return {};
  }
}

bool IsBetween(const Filters& filters, FilterIndex filter) {
  return (filter == kFilterMileage && filters.cmbFilter[kFilterMileage] == kMileageBetween) ||
         (filter == kFilterYear && filters.cmbFilter[kFilterYear] == kYearBetween);
}

FilterView ShowFilterState(const Filters& filters) {
  FilterView view;
  for (size_t filter = kFilterCustomerType; filter <= kFilterYear; ++filter)
    view.active[filter] = filters.chkFilter[filter];
  view.mileageBetween = IsBetween(filters, kFilterMileage);
  view.yearBetween = IsBetween(filters, kFilterYear);
  return view;
}

void AddFilterParameters(const Filters& filters, std::vector<NamedValue>& parameters) {
  Adder add(parameters);
  if (filters.Ticked(kFilterNoMarketing)) add("@IgnoreMarketingSwitch", 1);
  if (filters.Ticked(kFilterCustomerType)) {
    add("@UseCustType", 1);
    add("@WhenCustType", filters.cmbFilter[kFilterCustomerType]);
    add("@ValueCustType", filters.cmbData1.left(kLongestListValue));
  }
  if (filters.Ticked(kFilterEnquirySource)) {
    add("@UseEnquirySource", 1);
    add("@WhenEnquirySource", filters.cmbFilter[kFilterEnquirySource]);
    add("@ValueEnquirySource", filters.cmbData2.left(kLongestListValue));
  }
  if (filters.Ticked(kFilterMileage)) AddMileage(filters, add);
  if (filters.Ticked(kFilterYear)) AddYear(filters, add);
  if (filters.Ticked(kFilterModel)) {
    add("@FilterModel", 1);
    add("@ValueModel", filters.txtModel);
  }
}

std::optional<Message> GuardIncludeOptedOut(Filters& filters, const Options& options) {
  if (!filters.chkIncludeOptedOut || !options.Only_Send_Comms_When_Opted_In) return std::nullopt;
  filters.chkIncludeOptedOut = false;
  return InformationMessage(
      QStringLiteral("This option can not be used because 'Only send Emails or SMS Text Marketing to customers who "
                     "have Consented to receive such messages' has been enabled in QBX system settings."),
      QStringLiteral("Your settings prevent this option"));
}

std::optional<Message> CheckModelFilter(const Filters& filters, bool boatEdition) {
  if (!filters.Ticked(kFilterModel) || !TrimBlanks(filters.txtModel).isEmpty()) return std::nullopt;
  return WarningMessage(QStringLiteral("You have chosen to filter specific Models, but have not entered a %1 model.")
                            .arg(boatEdition ? QLatin1String("boat") : QLatin1String("vehicle")));
}

std::optional<Message> CheckRefresh(const Filters& filters, bool stepOneComplete, bool boatEdition) {
  if (!stepOneComplete) return WarningMessage(QStringLiteral("Please complete Step 1 first and click Next."));
  return CheckModelFilter(filters, boatEdition);
}

}  // namespace qbx
