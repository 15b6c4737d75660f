// The rows of a client-side recordset, packed.

#pragma once

#include <memory>
#include <vector>

#include "database/session.h"

namespace qbx {

/// Rows of a fixed number of columns. A cell is an 8-byte slot and a type byte; text lies length-prefixed in chunks of
/// 1 MiB. Nothing is allocated per cell, and rows never move. A text that is replaced keeps its old bytes until the
/// whole is destroyed.
class PackedRows {
 public:
  explicit PackedRows(int columns) : columns_(static_cast<std::size_t>(columns)) {}

  [[nodiscard]] qint64 Count() const { return count_; }

  /// The same rows again, which `Set` of either changes alone. Shares the memory of what neither changes.
  [[nodiscard]] PackedRows Copy() const;

  /// Copies the current row of the source.
  void Append(const RowSource& source);
  [[nodiscard]] Cell At(qint64 row, int column) const;
  void Set(qint64 row, int column, const Value& value);

 private:
  struct Place {
    std::size_t block;
    std::size_t cell;
  };

  [[nodiscard]] Place Locate(qint64 row, std::size_t column) const;
  [[nodiscard]] char* Reserve(std::size_t bytes);
  [[nodiscard]] qint64 StoreText(std::string_view text);
  void Store(Place place, const Cell& value);
  void Own(std::size_t block);

  std::size_t columns_;
  qint64 count_ = 0;
  // Shared by copies; a text is never changed in its place.
  std::vector<std::shared_ptr<qint64[]>> slots_;
  std::vector<std::shared_ptr<quint8[]>> types_;
  std::vector<std::shared_ptr<char[]>> texts_;
  char* textNext_ = nullptr;
  std::size_t textLeft_ = 0;
};

}  // namespace qbx
