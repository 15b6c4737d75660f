// The table of the starting queries. A row holds everything that distinguishes its query.

#pragma once

#include <QString>
#include <optional>
#include <span>

#include "platform/user_interface.h"
#include "queries/query_options.h"

namespace qbx {

/// Query numbers. They are stored as the campaign's `CampaignTypeID` and never change. They do not depend on the place
/// in the tree.
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

/// The kinds of rows in the results. Each has its procedure.
enum class RowsOf { kCustomers, kVehicles, kEngines };

enum class DateRule {
  kNone,
  kNeeded,
  kFilledWhenEmpty,  ///< an empty From becomes 01/01/1990, an empty To today
};

/// The makes (or engines) that a query offers.
struct MakesOption {
  const char* caption;  ///< of `fraMakes`
  int kind;             ///< the argument of `proc_sel_Makes_all`
  const char* refusal;  ///< the message when none is chosen
};

/// The option panels of step 1. Each panel has its checks and parameters.
struct OptionPanels {
  const char* text = "No Options available. Please click Next to apply some Filters.";
  const char* dates = nullptr;  ///< caption of `fraDates`; null for no dates
  const char* from = "From:";
  const char* to = "To:";
  bool ranking = false;  ///< whether it asks for a number of records and a first place
  bool reminder = false;
  std::optional<MakesOption> makes = {};
  int exampleMonths = 0;  ///< above 0: for the worked example and for the dates that replace empty ones
};

/// A row of the table.
struct StartingQuery {
  int number;  ///< a `QueryNumber`, or any other number that is free
  int parent;  ///< the number of its group, an earlier row; 0 for a group, which is shown expanded
  const char* key;
  const char* text;
  RowsOf rows;
  bool boatOnly = false;
  const char* description;
  const char* example = "";  ///< "{year}" is the current year; left out in the boat edition, where it does not fit
  OptionPanels panels = {};
  DateRule dates = DateRule::kNone;
  const char* selects = "";    ///< a sentence, see query_sentence.h
  const char* flag = nullptr;  ///< the parameter that is 1 for this query
  bool vehicleFilters = true;  ///< whether vehicle filters may narrow it
  bool mileageFilter = true;   ///< whether it can be filtered by mileage

  [[nodiscard]] bool IsGroup() const { return parent == kNoQuery; }
};

/// All rows, in the order of the tree.
[[nodiscard]] std::span<const StartingQuery> StartingQueries();

/// \return null for a number that no query has
[[nodiscard]] const StartingQuery* FindStartingQuery(int number);

/// The stored procedure that selects rows of this kind.
[[nodiscard]] QString ProcedureFor(RowsOf rows);

/// The refusal of a query's options other than its dates; nothing when they are valid.
[[nodiscard]] std::optional<Message> CheckQueryOptions(const StartingQuery& query, const QueryOptions& options);

/// The refusal of a reminder query without a reminder.
[[nodiscard]] std::optional<Message> CheckReminder(const StartingQuery& query, const QueryOptions& options);

}  // namespace qbx
