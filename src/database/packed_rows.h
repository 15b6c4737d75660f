// The rows of a client-side recordset, packed.

#pragma once

#include <memory>
#include <vector>

#include "database/session.h"

namespace qbx {

/// Rows with a fixed number of columns. A cell is a slot of 8 bytes and a type byte. Text is stored with its length in
/// chunks of 1 MiB. No cell is allocated by itself, and rows never move. A replaced text keeps its old bytes until all
/// rows are destroyed.
class PackedRows {
 public:
  explicit PackedRows(int columns) : columns_(static_cast<std::size_t>(columns)) {}

  [[nodiscard]] qint64 Count() const { return count_; }

  /// A copy. `Set` changes only the one that it is called on. Both share the memory of the cells that neither changes.
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
  // Shared by copies. A text is never changed in its place.
  std::vector<std::shared_ptr<qint64[]>> slots_;
  std::vector<std::shared_ptr<quint8[]>> types_;
  std::vector<std::shared_ptr<char[]>> texts_;
  char* textNext_ = nullptr;
  std::size_t textLeft_ = 0;
};

}  // namespace qbx
