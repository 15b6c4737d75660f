// Rows that are stepped while the server holds the rest.

#pragma once

#include <chrono>
#include <memory>
#include <optional>

#include "database/odbc/odbc_link.h"
#include "database/odbc/odbc_rows.h"
#include "database/odbc/odbc_statement.h"
#include "database/packed_rows.h"

namespace qbx {

/// The rows of a statement that only reads. A connection has one statement at a time: when the next one comes, the rest
/// is fetched and kept here. Destroying it before the end gives up the rest. It keeps the connection open.
class OpenRows final : public RowSource {
 public:
  /// \param statement  that was run, and stands on a result with columns
  /// \param left       of the statement's time limit, for fetching its rows; none: no limit
  OpenRows(std::shared_ptr<OdbcLink> link, std::unique_ptr<OdbcStatement> statement,
           std::optional<std::chrono::nanoseconds> left);
  ~OpenRows() override;
  OpenRows(const OpenRows&) = delete;
  OpenRows& operator=(const OpenRows&) = delete;

  [[nodiscard]] const std::vector<Column>& Columns() const override { return columns_; }
  bool Next() override;
  [[nodiscard]] Cell At(int column) const override;

  /// Fetches what is left, so that the connection is free; the current row stays current. A failure is thrown once the
  /// rows before it were stepped.
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
  std::optional<DatabaseError> failure_;  // behind the last row
};

}  // namespace qbx
