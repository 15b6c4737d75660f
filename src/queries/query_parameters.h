// The stored procedure of a query and its parameters.

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
  QString procedure;                   ///< empty for an invalid query number
  std::vector<NamedValue> parameters;  ///< in the order in which they are set
};

enum class QueryPass : int {
  kStart = 0,   ///< step 1: only the starting query
  kFilter = 1,  ///< step 2: with the filters
};

/// The campaign for which a call is made.
struct QueryRequest {
  int CampaignTypeID = 0;  ///< the query number
  int campaignId = 0;      ///< negative for an unsaved campaign
  QString user;
};

/// What the rows of a pass are; nothing for an invalid query number. In the filter pass a customer query with a vehicle
/// filter selects vehicles.
[[nodiscard]] std::optional<RowsOf> RowsSelected(QueryPass pass, int query, const Filters& filters);

/// The stored procedure that selects these rows; empty for an invalid query number.
[[nodiscard]] QString QueryProcedure(QueryPass pass, int query, const Filters& filters);

/// The call of a pass. Flags are the integers 0 and 1, identifiers are integers, dates are texts. Of a text box the
/// number at its start is passed, as a double.
[[nodiscard]] ProcedureCall BuildQueryCall(QueryPass pass, const QueryRequest& request, const QueryOptions& options,
                                           const Filters& filters);

}  // namespace qbx
