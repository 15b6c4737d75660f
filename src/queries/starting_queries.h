// The table of the starting queries: everything that distinguishes one from another stands in its row.

#pragma once

#include <QString>
#include <optional>
#include <span>

#include "platform/user_interface.h"
#include "queries/query_options.h"

namespace qbx {

/// Query numbers. They are stored as the campaign's `CampaignTypeID`, so they stay as they are and say nothing of the
/// place in the tree.
enum QueryNumber : int {
  kNoQuery = 0,
  kCustomerGroup = 1,
  kAllCustomers = 2,
  kLapsedCustomers = 3,
  kRecentCustomers = 4,
  kTopCustomers = 5,
  kBottomCustomers = 6,
  kVehicleGroup = 7,
  kAllVehicles = 8,
  kSpecificMakes = 9,
  kReminderDate = 10,
  kSpecificEngines = 11,
};

/// What a row of the results is. Each has its procedure.
enum class RowsOf { kCustomers, kVehicles, kEngines };

enum class DateRule {
  kNone,
  kNeeded,
  kFilledWhenEmpty,  ///< an empty From becomes 01/01/1990, an empty To today
};

/// The makes (or engines) of a query that has some to choose.
struct MakesOption {
  const char* caption;  ///< of `fraMakes`
  int kind;             ///< what `proc_sel_Makes_all` lists
  const char* refusal;  ///< when none is chosen
};

/// The option panels of step 1. A panel brings its checks and its parameters along.
struct OptionPanels {
  const char* text = "No Options available. Please click Next to apply some Filters.";
  const char* dates = nullptr;  ///< caption of `fraDates`; null: no dates
  const char* from = "From:";
  const char* to = "To:";
  bool ranking = false;  ///< how many, from which place on
  bool reminder = false;
  std::optional<MakesOption> makes = {};
  int exampleMonths = 0;  ///< above 0: the worked example, and the dates that stand in for empty ones
};

/// A row of the table.
struct StartingQuery {
  int number;  ///< a `QueryNumber`, or any other that is free
  int parent;  ///< the number of a group, which stands above; 0: this is a group, shown expanded
  const char* key;
  const char* text;
  RowsOf rows;
  bool boatOnly = false;
  const char* description;
  const char* example = "";  ///< "{year}" is the current year; left out in the boat edition, where it does not fit
  OptionPanels panels = {};
  DateRule dates = DateRule::kNone;
  const char* selects = "";    ///< the sentence that says what is selected, see query_sentence.h
  const char* flag = nullptr;  ///< the parameter that is 1 for this query
  bool vehicleFilters = true;  ///< may be narrowed by them
  bool mileageFilter = true;   ///< there is a mileage to filter by

  [[nodiscard]] bool IsGroup() const { return parent == kNoQuery; }
};

/// All rows, in the order of the tree.
[[nodiscard]] std::span<const StartingQuery> StartingQueries();

/// \return null for a number that no query has
[[nodiscard]] const StartingQuery* FindStartingQuery(int number);

/// The stored procedure that selects such rows.
[[nodiscard]] QString ProcedureFor(RowsOf rows);

/// What refuses the options of a query, its dates apart.
[[nodiscard]] std::optional<Message> CheckQueryOptions(const StartingQuery& query, const QueryOptions& options);

/// What refuses a reminder query without a reminder.
[[nodiscard]] std::optional<Message> CheckReminder(const StartingQuery& query, const QueryOptions& options);

/// The boat edition's wording of a text: boats instead of vehicles.
[[nodiscard]] QString BoatWording(QString text);

}  // namespace qbx
