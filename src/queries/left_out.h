// Whom a query leaves out, and why, in numbers.

#pragma once

#include <QStringList>
#include <map>
#include <optional>
#include <vector>

#include "database/recordset.h"
#include "queries/query_parameters.h"

namespace qbx {

/// Rows of step 1 and what was left out before it. Customers who opted out are counted first; "No Marketing" is among the others.
struct LeftOutBefore {
  qint64 found = 0;
  qint64 optedOut = 0;
  qint64 noMarketing = 0;
};

/// What became of the rows up to the last pass.
struct LeftOutAfter {
  struct Filter {
    size_t filter;  ///< a `FilterIndex`
    qint64 rows;    ///< left out by it, among those that the filters before it left
  };
  qint64 candidates = 0;             ///< rows before the filters
  bool ofVehicles = false;           ///< they are the vehicles of the customers of step 1
  std::vector<Filter> filters = {};  ///< those that were applied, in the order of their table
  qint64 withoutConsent = 0;
};

/// Nothing is known until a query ran; the host may be unable to count.
struct LeftOut {
  std::optional<LeftOutBefore> before;
  std::optional<LeftOutAfter> after;
};

/// Rows that were left out, by the reasons that `proc_sel_Left_Out` numbers.
using ReasonCounts = std::map<int, qint64>;

/// Whether a filter is ticked that leaves customers or vehicles out.
[[nodiscard]] bool AnyFilterNarrows(const Filters& filters);

/// The call that counts what a pass leaves out. It takes one pass over the customers or vehicles at most: without a ticked filter only those who may
/// not be contacted are looked at.
[[nodiscard]] ProcedureCall BuildLeftOutCall(QueryPass pass, const QueryRequest& request, const QueryOptions& options,
                                             const Filters& filters);

/// Reads what the call returned.
/// \throws DatabaseError
[[nodiscard]] ReasonCounts ReadReasons(Recordset rows);

/// Whether a run of both passes counts in the second alone: they select the same kind of rows among the same customers.
[[nodiscard]] bool OneCountForBothPasses(int query, const Filters& filters);

/// \param found  rows of step 1
[[nodiscard]] LeftOutBefore MakeLeftOutBefore(const ReasonCounts& reasons, qint64 found);
/// \param selected  rows of the pass before those without consent were removed
[[nodiscard]] LeftOutAfter MakeLeftOutAfter(const ReasonCounts& reasons, qint64 selected, int query,
                                            const Filters& filters);

/// Rows by what they have in common.
struct CountedRows {
  QString what;
  qint64 rows = 0;
};

/// Rows that were left out, before the filters and by them, by the reason: "Opted out", "No Marketing", "By Year", "Without consent". Only where there are some.
[[nodiscard]] std::vector<CountedRows> CountLeftOut(const LeftOut& leftOut, bool boatEdition);

/// The lines beside the two record counts, such as "Left out before: 12 opted out, 9 No Marketing." and "Left out: 40 by Customer Type, 12 without
/// consent." A line is empty where nothing is left out, or nothing is known.
[[nodiscard]] QStringList LeftOutTexts(const LeftOut& leftOut, bool boatEdition);

}  // namespace qbx
