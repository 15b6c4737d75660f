// Who a query has to select, worked out by plain loops.

#pragma once

#include "consent/query_plan.h"
#include "consent/world.h"

namespace qbx::consent {

/// A row that a query has to give.
struct Picked {
  const Customer* customer = nullptr;
  const Vehicle* vehicle = nullptr;  ///< nothing: a row of the customer alone
  QDate due;                         ///< of the reminder query
};

/// \param filtered  step 2: with the filters; else step 1
/// \param settings  the options as the desk knows them
[[nodiscard]] std::vector<Picked> Select(const World& world, const QueryPlan& plan, bool filtered,
                                         const Settings& settings);

}  // namespace qbx::consent
