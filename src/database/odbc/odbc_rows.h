// Reads the rows of an ODBC statement, one at a time.

#pragma once

#include <cstddef>

#include "database/odbc/odbc_handles.h"
#include "database/session.h"

namespace qbx {

/// The type of a cell for a type of the server; text for all other types.
[[nodiscard]] ValueType TypeOfSqlType(SQLSMALLINT sqlType);

/// Reads the current result of a statement once, into cells. Numbers, dates and short texts are bound, so they come
/// with the row. Long texts are fetched piece by piece.
class OdbcRows final : public RowSource {
 public:
  /// \param statement  its current result has columns. It must outlive this object.
  /// \param anywhere   whether the driver can fetch every column piece by piece, not only those after the last bound
  ///                   one
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
  /// Where the driver puts the value of a column.
  struct Place {
    SQLSMALLINT cType = SQL_C_WCHAR;
    SQLLEN bytes = 0;        ///< 0: a long text, which is not part of `row_`
    bool bound = false;      ///< the value comes with the row
    std::size_t offset = 0;  ///< in `row_`
    SQLLEN length = 0;       ///< of the current value in bytes, or SQL_NULL_DATA
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
