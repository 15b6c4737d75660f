// The table of the filters. A row holds everything that distinguishes its filter.

#pragma once

#include <QString>
#include <array>
#include <optional>
#include <span>

#include "campaigns/campaign_record.h"
#include "queries/filters.h"

namespace qbx {

/// A condition of a filter. Its position in the row is stored and sent to the host.
struct FilterCondition {
  const char* text;        ///< entry in the condition box
  const char* word;        ///< on the command line
  bool twoValues = false;  ///< "Between": it uses the second box
  /// For a filter by number: the bounds that are sent are the value plus these numbers. The upper bound of a condition
  /// with two values is made from the second value.
  std::optional<int> from = {};
  std::optional<int> to = {};
  const char* withoutValue = nullptr;  ///< for a list: what an empty value selects
};

enum class FilterValue {
  kNone,    ///< only the tick
  kList,    ///< a text from a list of the host
  kText,    ///< free text
  kNumber,  ///< one or two numbers as typed
};

/// A row of the table. Parts that a filter lacks are null.
struct FilterRow {
  FilterIndex index;    ///< of its controls `chkFilter` and `cmbFilter`
  const char* name;     ///< the name in messages
  const char* caption;  ///< of the check box; for the boat edition some words are replaced, see `FilterWording`
  char letter;          ///< letter of the caption, in both editions: with Alt it ticks the filter; unique on the page
  const char* tip;      ///< the effect on the rows, in the words of the caption
  FilterValue value = FilterValue::kNone;
  bool ofVehicles = false;  ///< whether it narrows vehicles, so that the query runs over vehicles
  std::span<const FilterCondition> conditions = {};

  // Its values in `Filters`, and whether the chosen query has the filter at all.
  QString Filters::*text = nullptr;
  std::array<QString, 2> Filters::*numbers = nullptr;
  bool Filters::*offered = nullptr;

  const char* control = nullptr;  ///< name of the value control; a filter by number has two, whose names end in 0 and 1
  const char* listStatement = nullptr;  ///< statement for the list; its column `Description` is shown

  // Its fields in a stored campaign; a filter without them is not stored.
  bool CampaignRecord::*use = nullptr;
  int CampaignRecord::*when = nullptr;
  std::array<QString CampaignRecord::*, 2> values = {};

  // Its parameters of the procedures.
  const char* useParameter = nullptr;
  const char* whenParameter = nullptr;
  const char* valueParameter = nullptr;
  const char* fromParameter = nullptr;
  const char* toParameter = nullptr;

  const char* needsValue = nullptr;  ///< the message that refuses the filter without a value, also at "Refresh"

  const char* flag = nullptr;  ///< on the command line
  const char* help = nullptr;

  [[nodiscard]] bool IsStored() const { return use != nullptr; }
};

/// All rows, by number.
[[nodiscard]] std::span<const FilterRow, kFilterCount> FilterRows();

/// The condition at a position of the filter's list; null when there is none.
[[nodiscard]] const FilterCondition* ConditionAt(const FilterRow& row, int position);

/// A caption, name or message in the words of the edition: boats have hours instead of mileage.
[[nodiscard]] QString FilterWording(const char* text, bool boatEdition);

}  // namespace qbx
