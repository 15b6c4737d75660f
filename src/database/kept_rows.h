// A result that was read already.

#pragma once

#include <limits>
#include <vector>

#include "database/packed_rows.h"
#include "database/session.h"

namespace qbx {

/// Rows kept in memory, so that the server is free for the next statement.
class KeptRows final : public RowSource {
 public:
  /// Reads the remaining rows of the source.
  /// \param atMost  reads no more than that many
  explicit KeptRows(RowSource& source, qint64 atMost = std::numeric_limits<qint64>::max())
      : columns_(source.Columns()), rows_(static_cast<int>(columns_.size())) {
    Read(source, atMost);
  }

  /// Reads further rows of the source.
  void Read(RowSource& source, qint64 atMost = std::numeric_limits<qint64>::max()) {
    for (; atMost > 0 && source.Next(); --atMost)
      rows_.Append(source);
  }
  [[nodiscard]] qint64 Count() const { return rows_.Count(); }

  [[nodiscard]] const std::vector<Column>& Columns() const override { return columns_; }
  bool Next() override { return ++row_ < rows_.Count(); }
  [[nodiscard]] Cell At(int column) const override { return rows_.At(row_, column); }
  [[nodiscard]] PackedRows* Packed() override { return row_ < 0 ? &rows_ : nullptr; }

 private:
  std::vector<Column> columns_;
  PackedRows rows_;
  qint64 row_ = -1;
};

}  // namespace qbx
