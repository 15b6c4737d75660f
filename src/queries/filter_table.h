// The table of the filters: everything that distinguishes one from another stands in its row.

#pragma once

#include <QString>
#include <array>
#include <optional>
#include <span>

#include "campaigns/campaign_record.h"
#include "queries/filters.h"

namespace qbx {

/// A condition of a filter. Its position in the row is what is stored and sent.
struct FilterCondition {
  const char* text;        ///< entry of the condition box
  const char* word;        ///< on the command line
  bool twoValues = false;  ///< "Between": the second box belongs to it
  /// Of a filter by number: the bounds that are sent, as what is added to the value. The upper bound of a condition
  /// with two values is made from the second.
  std::optional<int> from = {};
  std::optional<int> to = {};
  const char* withoutValue = nullptr;  ///< of a list: what an empty value selects
};

enum class FilterValue {
  kNone,    ///< the tick alone
  kList,    ///< a text that a list of the host offers
  kText,    ///< free text
  kNumber,  ///< one or two numbers as typed
};

/// A row of the table. What a filter does not have is null.
struct FilterRow {
  FilterIndex index;    ///< its control: `chkFilter`, `cmbFilter`
  const char* name;     ///< in messages
  const char* caption;  ///< of the check box; the boat edition's captions and names replace words, see `FilterWording`
  char letter;          ///< of the caption, in both editions: with Alt it ticks the filter; the page has each once
  const char* tip;      ///< what the filter does to the rows; worded as the caption
  FilterValue value = FilterValue::kNone;
  bool ofVehicles = false;  ///< narrows vehicles, so the query runs over these
  std::span<const FilterCondition> conditions = {};

  // Where the values are in `Filters`, and whether the chosen query has the filter at all.
  QString Filters::*text = nullptr;
  std::array<QString, 2> Filters::*numbers = nullptr;
  bool Filters::*offered = nullptr;

  const char* control = nullptr;  ///< name of the value control; a filter by number has two, with 0 and 1 behind it
  const char* listStatement = nullptr;  ///< what the list offers: its column `Description`

  // What a campaign stores. Without these the filter is not stored.
  bool CampaignRecord::*use = nullptr;
  int CampaignRecord::*when = nullptr;
  std::array<QString CampaignRecord::*, 2> values = {};

  // Parameters of the procedures.
  const char* useParameter = nullptr;
  const char* whenParameter = nullptr;
  const char* valueParameter = nullptr;
  const char* fromParameter = nullptr;
  const char* toParameter = nullptr;

  const char* needsValue = nullptr;  ///< what refuses the filter without a value, as "Refresh" does, too

  const char* flag = nullptr;  ///< on the command line
  const char* help = nullptr;

  [[nodiscard]] bool IsStored() const { return use != nullptr; }
};

/// All rows, by number.
[[nodiscard]] std::span<const FilterRow, kFilterCount> FilterRows();

/// The condition of a filter at a position of its list; null when there is none.
[[nodiscard]] const FilterCondition* ConditionAt(const FilterRow& row, int position);

/// A caption, name or message in the words of the edition: a boat has hours instead of a mileage.
[[nodiscard]] QString FilterWording(const char* text, bool boatEdition);

}  // namespace qbx
