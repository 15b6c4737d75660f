// The customers that a query must select, computed by simple loops.

#pragma once

#include <map>

#include "consent/query_plan.h"
#include "consent/world.h"

namespace qbx::consent {

/// A row that a query must select.
struct Picked {
  const Customer* customer = nullptr;
  const Vehicle* vehicle = nullptr;  ///< null: a row of the customer alone
  QDate due;                         ///< of the reminder query
};

/// \param filtered  true: step 2, with the filters; false: step 1
/// \param settings  the options as the desk knows them
[[nodiscard]] std::vector<Picked> Select(const World& world, const QueryPlan& plan, bool filtered,
                                         const Settings& settings);

/// The number of rows that a query must leave out, by reason.
struct Losses {
  qint64 optedOut = 0;
  qint64 noMarketing = 0;
  qint64 candidates = 0;  ///< rows before the filters
  std::map<size_t, qint64> filters;
  qint64 withoutConsent = 0;
  friend bool operator==(const Losses&, const Losses&) = default;
};
[[nodiscard]] Losses CountLosses(const World& world, const QueryPlan& plan, bool filtered, const Settings& settings);

}  // namespace qbx::consent
