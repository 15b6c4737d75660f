// Rows that the caller steps through while the server has the rest.

#pragma once

#include <chrono>
#include <memory>
#include <optional>

#include "database/odbc/odbc_link.h"
#include "database/odbc/odbc_rows.h"
#include "database/odbc/odbc_statement.h"
#include "database/packed_rows.h"

namespace qbx {

/// The rows of a statement that only reads. A connection can run only one statement at a time: before the next
/// statement, the rest of the rows is fetched and kept here. Destruction before the end gives up the rest. The object
/// keeps the connection open.
class OpenRows final : public RowSource {
 public:
  /// \param statement  was run, and its current result has columns
  /// \param left       the rest of the statement's time limit, for fetching its rows; none: no limit
  OpenRows(std::shared_ptr<OdbcLink> link, std::unique_ptr<OdbcStatement> statement,
           std::optional<std::chrono::nanoseconds> left);
  ~OpenRows() override;
  OpenRows(const OpenRows&) = delete;
  OpenRows& operator=(const OpenRows&) = delete;

  [[nodiscard]] const std::vector<Column>& Columns() const override { return columns_; }
  bool Next() override;
  [[nodiscard]] Cell At(int column) const override;

  /// Fetches the rest of the rows, so that the connection is free. The current row stays current. After a failure, Next
  /// returns the rows before it, and then throws it.
  void KeepRest();

 private:
  [[nodiscard]] bool Fetch(OdbcLink::MayInterrupt mayInterrupt);
  void Release();

  std::shared_ptr<OdbcLink> link_;
  std::unique_ptr<OdbcStatement> statement_;
  std::vector<Column> columns_;
  std::unique_ptr<OdbcRows> rows_;
  std::optional<std::chrono::nanoseconds> left_;
  bool atRow_ = false;
  std::optional<PackedRows> kept_;
  qint64 keptRow_ = -1;
  std::optional<DatabaseError> failure_;  // to throw after the last row
};

}  // namespace qbx
