// The rows of a report, one after the other.

#pragma once

#include <memory>

#include "database/recordset.h"
#include "database/session.h"

namespace qbx {

/// Steps once through rows, from the first to the last.
class ReportRows {
 public:
  virtual ~ReportRows() = default;
  [[nodiscard]] virtual const std::vector<Column>& Columns() const = 0;
  /// \return false at the end
  virtual bool Next() = 0;
  [[nodiscard]] virtual Value At(int column) const = 0;
};

/// The rows of a client-side recordset, in its order and filter.
[[nodiscard]] std::unique_ptr<ReportRows> RowsOfRecordset(Recordset records);

/// Reads a result to its end into a temporary file and steps through that. The server is soon free for other
/// statements, and memory does not grow with the rows.
/// \param source  null for no rows
/// \throws ReportError, DatabaseError
[[nodiscard]] std::unique_ptr<ReportRows> SpoolRows(std::unique_ptr<RowSource> source);

}  // namespace qbx
