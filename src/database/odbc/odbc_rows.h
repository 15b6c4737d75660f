// The rows of an ODBC statement, read as they are asked for.

#pragma once

#include "database/odbc/odbc_handles.h"
#include "database/session.h"

namespace qbx {

/// Reads the current result of a statement once, into the cells that the rest of the program knows.
class OdbcRows final : public RowSource {
 public:
  /// \param statement  stands on a result with columns, and outlives this
  explicit OdbcRows(const OdbcHandle& statement);

  [[nodiscard]] const std::vector<Column>& Columns() const override { return columns_; }
  bool Next() override;
  [[nodiscard]] Cell At(int column) const override { return cells_[static_cast<std::size_t>(column)]; }

 private:
  void Describe(SQLUSMALLINT number);
  void Read(std::size_t column);
  void ReadText(std::size_t column);
  void ReadMoment(std::size_t column);
  /// \return whether there is a value, which is not NULL
  bool Get(std::size_t column, SQLSMALLINT type, SQLPOINTER target, SQLLEN size);
  [[noreturn]] void Fail() const;

  const OdbcHandle& statement_;
  std::vector<Column> columns_;
  std::vector<Cell> cells_;
  std::vector<QByteArray> texts_;
};

}  // namespace qbx
