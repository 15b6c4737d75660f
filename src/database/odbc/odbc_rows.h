// The rows of an ODBC statement, read as they are asked for.

#pragma once

#include <cstddef>

#include "database/odbc/odbc_handles.h"
#include "database/session.h"

namespace qbx {

/// How a type of the server is held here; a type that is nothing else, as text.
[[nodiscard]] ValueType TypeOfSqlType(SQLSMALLINT sqlType);

/// Reads the current result of a statement once, into the cells that the rest of the program knows. Numbers, dates and
/// short texts are bound and come with the row; long texts are fetched piece by piece.
class OdbcRows final : public RowSource {
 public:
  /// \param statement  stands on a result with columns, and outlives this
  /// \param anywhere   whether the driver fetches piece by piece anywhere in a row, not only behind the last bound column
  /// \throws OdbcFailure
  OdbcRows(const OdbcHandle& statement, bool anywhere);
  OdbcRows(const OdbcRows&) = delete;
  OdbcRows& operator=(const OdbcRows&) = delete;
  ~OdbcRows() override;

  [[nodiscard]] const std::vector<Column>& Columns() const override { return columns_; }
  /// \throws OdbcFailure
  bool Next() override;
  [[nodiscard]] Cell At(int column) const override { return cells_[static_cast<std::size_t>(column)]; }

 private:
  /// Where a column's value comes to.
  struct Place {
    SQLSMALLINT cType = SQL_C_WCHAR;
    SQLLEN bytes = 0;        ///< 0: a long text, which has no place in the row
    bool bound = false;      ///< comes with the row
    std::size_t offset = 0;  ///< in `row_`
    SQLLEN length = 0;       ///< of the present value, or SQL_NULL_DATA
    std::vector<char> utf8 = {};
  };

  void Describe(SQLUSMALLINT number);
  void Bind(bool anywhere);
  void Read(std::size_t column);
  void ReadLongText(std::size_t column);
  void PutText(std::size_t column, const SQLWCHAR* units, std::size_t count);
  [[noreturn]] void Fail() const;

  const OdbcHandle& statement_;
  std::vector<Column> columns_;
  std::vector<Place> places_;
  std::vector<Cell> cells_;
  std::vector<std::byte> row_;
  std::vector<SQLWCHAR> longText_;
};

}  // namespace qbx
