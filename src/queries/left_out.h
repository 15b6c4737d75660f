// Counting whom a query leaves out, and why.

#pragma once

#include <QStringList>
#include <map>
#include <optional>
#include <vector>

#include "database/recordset.h"
#include "queries/query_parameters.h"

namespace qbx {

/// The rows of step 1, and what was left out before them. Customers who opted out are counted first; "No Marketing"
/// counts only the others.
struct LeftOutBefore {
  qint64 found = 0;
  qint64 optedOut = 0;
  qint64 noMarketing = 0;
};

/// The rows up to the last pass.
struct LeftOutAfter {
  struct Filter {
    size_t filter;  ///< a `FilterIndex`
    qint64 rows;    ///< left out by it, of the rows that the filters before it left
  };
  qint64 candidates = 0;             ///< rows before the filters
  bool ofVehicles = false;           ///< whether they are the vehicles of the customers of step 1
  std::vector<Filter> filters = {};  ///< the filters that were applied, in the order of their table
  qint64 withoutConsent = 0;
};

/// Nothing is known until a query ran, or when the host cannot count.
struct LeftOut {
  std::optional<LeftOutBefore> before;
  std::optional<LeftOutAfter> after;
};

/// The number of rows left out, by the reasons' numbers in `proc_sel_Left_Out`.
using ReasonCounts = std::map<int, qint64>;

/// Whether a ticked filter leaves customers or vehicles out.
[[nodiscard]] bool AnyFilterNarrows(const Filters& filters);

/// The call that counts what a pass leaves out. It reads the customers or vehicles at most once; without a ticked
/// filter it reads only those who may not be contacted.
[[nodiscard]] ProcedureCall BuildLeftOutCall(QueryPass pass, const QueryRequest& request, const QueryOptions& options,
                                             const Filters& filters);

/// Reads the result of the call.
/// \throws DatabaseError
[[nodiscard]] ReasonCounts ReadReasons(Recordset rows);

/// Whether a run of both passes counts only in the second, because both select the same kind of rows among the same
/// customers.
[[nodiscard]] bool OneCountForBothPasses(int query, const Filters& filters);

/// \param found  rows of step 1
[[nodiscard]] LeftOutBefore MakeLeftOutBefore(const ReasonCounts& reasons, qint64 found);
/// \param selected  rows of the pass before rows without consent were removed
[[nodiscard]] LeftOutAfter MakeLeftOutAfter(const ReasonCounts& reasons, qint64 selected, int query,
                                            const Filters& filters);

/// A number of rows with what they have in common.
struct CountedRows {
  QString what;
  qint64 rows = 0;
};

/// The rows left out before and by the filters, by reason: "Opted out", "No Marketing", "By Year", "Without consent".
/// Reasons without rows are missing.
[[nodiscard]] std::vector<CountedRows> CountLeftOut(const LeftOut& leftOut, bool boatEdition);

/// The lines beside the two record counts, such as "Left out before: 12 opted out, 9 No Marketing." and "Left out: 40
/// by Customer Type, 12 without consent." A line is empty when nothing is left out or nothing is known.
[[nodiscard]] QStringList LeftOutTexts(const LeftOut& leftOut, bool boatEdition);

}  // namespace qbx
