// Which stored procedure a query runs, and with which parameters.

#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "database/value.h"
#include "queries/query_options.h"

namespace qbx {

struct Filters;
enum class RowsOf;

/// A parameter to be set by name.
struct NamedValue {
  QString name;  ///< with "@"
  Value value;
  friend bool operator==(const NamedValue&, const NamedValue&) = default;
};

struct ProcedureCall {
  QString procedure;                   ///< empty when the query number is none
  std::vector<NamedValue> parameters;  ///< in the order in which they are set
};

enum class QueryPass : int {
  kStart = 0,   ///< step 1: the starting query alone
  kFilter = 1,  ///< step 2: with the filters
};

/// What a call is made from.
struct QueryRequest {
  int CampaignTypeID = 0;  ///< the query number
  int campaignId = 0;      ///< negative for an unsaved campaign
  QString user;
};

/// What the rows of a pass are; nothing when the query number is none. A customer query with a vehicle filter runs over the vehicles in the filter
/// pass.
[[nodiscard]] std::optional<RowsOf> RowsSelected(QueryPass pass, int query, const Filters& filters);

/// The stored procedure that selects these rows; empty when the query number is none.
[[nodiscard]] QString QueryProcedure(QueryPass pass, int query, const Filters& filters);

/// The call of a pass. Numbers are integers as 0 or 1, identifiers as integers, what comes from a text box is the
/// number at its start, as a double; dates are texts.
[[nodiscard]] ProcedureCall BuildQueryCall(QueryPass pass, const QueryRequest& request, const QueryOptions& options,
                                           const Filters& filters);

}  // namespace qbx
