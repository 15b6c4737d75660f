// The declared types of the columns of a result.

#pragma once

#include <vector>

#include "database/session.h"
#include "tds_server/answer.h"

namespace qbx::tds {

/// One row, kept.
using HeldRow = std::vector<Value>;

/// The start of a result.
struct ResultStart {
  std::vector<WireColumn> columns;
  std::vector<HeldRow> rows;  ///< the first rows, as far as they had to be read
  bool isAll = false;         ///< `rows` has all rows, and the source must not be asked again
};

/// Declares the columns of a result as a server does. A column of a table has its declared type. An expression has the
/// type of its values in the first rows, which are read to find out.
[[nodiscard]] ResultStart StartResult(Session& session, RowSource& rows);

}  // namespace qbx::tds
