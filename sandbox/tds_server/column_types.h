// What the columns of a result are declared as.

#pragma once

#include <QHash>
#include <vector>

#include "database/session.h"
#include "tds_server/answer.h"

namespace qbx::tds {

/// One row, kept.
using HeldRow = std::vector<Value>;

/// The start of a result.
struct ResultStart {
  std::vector<WireColumn> columns;
  std::vector<HeldRow> rows;  ///< the first ones, as far as they had to be read
  bool isAll = false;         ///< there are no more; the source must not be asked again
};

/// Declares the columns of a result as a server does. A column of a table has the table's type; an expression has the
/// type of its values in the first rows, which are read for that.
[[nodiscard]] ResultStart StartResult(Session& session, RowSource& rows);

}  // namespace qbx::tds
