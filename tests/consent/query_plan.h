// A user's choices in steps 1 to 3: query, options, filters, send methods.

#pragma once

#include "consent/world.h"
#include "hostdb/random_source.h"
#include "queries/filters.h"
#include "queries/query_catalogue.h"
#include "queries/query_options.h"
#include "results/send_methods.h"

namespace qbx::consent {

struct QueryPlan {
  int query = kAllCustomers;
  QueryOptions options;
  Filters filters;  ///< of step 2; "Include Opted Out" is ticked in step 1
  bool refreshFirst = false;
};

[[nodiscard]] QueryPlan MakeQueryPlan(RandomSource& random, const World& world);
[[nodiscard]] SendMethods MakeSendMethods(RandomSource& random);

/// For the story of a round.
[[nodiscard]] QString Describe(const QueryPlan& plan);
[[nodiscard]] QString Describe(const SendMethods& methods);

}  // namespace qbx::consent
