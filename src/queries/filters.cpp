#include "queries/filters.h"

#include <algorithm>

#include "queries/filter_table.h"
#include "queries/plain_messages.h"
#include "settings/options.h"
#include "util/text.h"
#include "util/typed_number.h"

namespace qbx {

namespace {

constexpr int kLongestListValue = 50;

const FilterRow& Row(FilterIndex filter) {
  return FilterRows()[filter];
}

void AddBounds(const FilterRow& row, const Filters& filters, std::vector<NamedValue>& parameters) {
  const FilterCondition* const condition = ConditionAt(row, filters.cmbFilter[row.index]);
  if (condition == nullptr) return;
  const auto& typed = filters.*row.numbers;
  const double first = TypedNumber(typed[0]);
  const double last = condition->twoValues ? TypedNumber(typed[1]) : first;
  if (condition->from) parameters.push_back({QString::fromLatin1(row.fromParameter), first + *condition->from});
  if (condition->to) parameters.push_back({QString::fromLatin1(row.toParameter), last + *condition->to});
}

void AddRow(const FilterRow& row, const Filters& filters, std::vector<NamedValue>& parameters) {
  parameters.push_back({QString::fromLatin1(row.useParameter), 1});
  if (row.whenParameter != nullptr)
    parameters.push_back({QString::fromLatin1(row.whenParameter), filters.cmbFilter[row.index]});
  if (row.valueParameter != nullptr) {
    const QString& text = filters.*row.text;
    const bool fromList = row.value == FilterValue::kList;
    parameters.push_back({QString::fromLatin1(row.valueParameter), fromList ? text.left(kLongestListValue) : text});
  }
  if (row.numbers != nullptr) AddBounds(row, filters, parameters);
}

}  // namespace

bool Filters::Ticked(FilterIndex filter) const {
  const bool Filters::*const offered = Row(filter).offered;
  return chkFilter[filter] && (offered == nullptr || this->*offered);
}

bool Filters::AnyVehicleFilter() const {
  return std::ranges::any_of(FilterRows(),
                             [this](const FilterRow& row) { return row.ofVehicles && Ticked(row.index); });
}

FilterCaptions MakeFilterCaptions(bool boatEdition) {
  FilterCaptions captions{.fraVehicleFilter = FilterWording("Vehicle Filter", boatEdition), .chkFilter = {}};
  for (const FilterRow& row : FilterRows())
    captions.chkFilter[row.index] = FilterWording(row.caption, boatEdition);
  return captions;
}

QStringList FilterConditions(FilterIndex filter) {
  QStringList texts;
  for (const FilterCondition& condition : Row(filter).conditions)
    texts += QString::fromLatin1(condition.text);
  return texts;
}

bool IsBetween(const Filters& filters, FilterIndex filter) {
  const FilterCondition* const condition = ConditionAt(Row(filter), filters.cmbFilter[filter]);
  return condition != nullptr && condition->twoValues;
}

FilterView ShowFilterState(const Filters& filters) {
  FilterView view;
  for (const FilterRow& row : FilterRows()) {
    view.active[row.index] = filters.chkFilter[row.index];
    view.between[row.index] = IsBetween(filters, row.index);
  }
  return view;
}

void AddFilterParameters(const Filters& filters, std::vector<NamedValue>& parameters) {
  for (const FilterRow& row : FilterRows()) {
    if (filters.Ticked(row.index)) AddRow(row, filters, parameters);
  }
}

std::optional<Message> GuardIncludeOptedOut(Filters& filters, const Options& options) {
  if (!filters.chkIncludeOptedOut || !options.Only_Send_Comms_When_Opted_In) return std::nullopt;
  filters.chkIncludeOptedOut = false;
  return InformationMessage(
      QStringLiteral(
          "This option can not be used because 'Only send Emails or SMS Text Marketing to customers who have Consented to receive such messages' has been enabled in QBX system settings."),
      QStringLiteral("Your settings prevent this option"));
}

std::optional<Message> CheckNeededValues(const Filters& filters, bool boatEdition) {
  for (const FilterRow& row : FilterRows()) {
    if (row.needsValue != nullptr && filters.Ticked(row.index) && TrimBlanks(filters.*row.text).isEmpty())
      return WarningMessage(FilterWording(row.needsValue, boatEdition));
  }
  return std::nullopt;
}

std::optional<Message> CheckBetween(const Filters& filters, bool boatEdition) {
  for (const FilterRow& row : FilterRows()) {
    if (row.numbers == nullptr || !filters.Ticked(row.index) || !IsBetween(filters, row.index)) continue;
    const auto& typed = filters.*row.numbers;
    if (TypedNumber(typed[0]) <= TypedNumber(typed[1])) continue;
    return WarningMessage(QStringLiteral("%1 Filter is not valid. %1 From must be less than %1 To")
                              .arg(FilterWording(row.name, boatEdition)));
  }
  return std::nullopt;
}

std::optional<Message> CheckRefresh(const Filters& filters, bool stepOneComplete, bool boatEdition) {
  if (!stepOneComplete) return WarningMessage(QStringLiteral("Please complete Step 1 first and click Next."));
  return CheckNeededValues(filters, boatEdition);
}

}  // namespace qbx
