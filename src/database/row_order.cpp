#include "database/row_order.h"

#include <algorithm>
#include <bit>

#include "database/text_compare.h"

namespace qbx {
namespace {

double NumberOf(const Cell& cell) {
  if (cell.type == ValueType::kDouble) return cell.real;
  double number = static_cast<double>(cell.integer);
  for (int i = 0; i < cell.scale; ++i)
    number /= 10;
  return number;
}

int Rank(const Cell& cell) {
  return cell.type == ValueType::kNull ? 0 : cell.type == ValueType::kText ? 2 : 1;
}

/// Order of two cells of one column and rank.
int CompareCells(const Cell& left, const Cell& right) {
  if (left.type == ValueType::kNull) return 0;
  if (left.type == ValueType::kText) return CompareNoCase(left.utf8, right.utf8);
  if (left.type == right.type && left.type != ValueType::kDouble && left.scale == right.scale) {
    return left.integer == right.integer ? 0 : (left.integer < right.integer ? -1 : 1);
  }
  const double a = NumberOf(left);
  const double b = NumberOf(right);
  return a == b ? 0 : (a < b ? -1 : 1);
}

/// What decides most comparisons of a sort without looking at the cell again. Cells whose rank and head differ are in the
/// order of these.
struct SortKey {
  quint64 head;
  quint32 row;
  quint32 rank;
};

/// A number whose order as unsigned integer is that of the double.
quint64 OrderedBits(double number) {
  const auto bits = std::bit_cast<quint64>(number == 0 ? 0.0 : number);
  constexpr quint64 kSign = quint64{1} << 63U;
  return (bits & kSign) != 0 ? ~bits : bits | kSign;
}

SortKey KeyOf(const Cell& cell, quint32 row) {
  const auto rank = static_cast<quint32>(Rank(cell));
  if (rank == 0) return {0, row, rank};
  return {cell.type == ValueType::kText ? FoldedStart(cell.utf8) : OrderedBits(NumberOf(cell)), row, rank};
}

/// Whether one row stands before another.
class IsBefore {
 public:
  IsBefore(const PackedRows& rows, int column, bool descending)
      : rows_(rows), column_(column), descending_(descending) {}

  bool operator()(const SortKey& left, const SortKey& right) const {
    const int sign = Compare(left, right);
    return sign == 0 ? left.row < right.row : (sign < 0) != descending_;
  }

 private:
  [[nodiscard]] int Compare(const SortKey& left, const SortKey& right) const {
    if (left.rank != right.rank) return left.rank < right.rank ? -1 : 1;
    if (left.head != right.head) return left.head < right.head ? -1 : 1;
    return CompareCells(rows_.At(left.row, column_), rows_.At(right.row, column_));
  }

  const PackedRows& rows_;
  int column_;
  bool descending_;
};

}  // namespace

void SortRows(std::vector<quint32>& order, const PackedRows& rows, int column, bool descending) {
  std::vector<SortKey> keys;
  keys.reserve(order.size());
  for (const quint32 row : order)
    keys.push_back(KeyOf(rows.At(row, column), row));
  std::sort(keys.begin(), keys.end(), IsBefore(rows, column, descending));
  std::transform(keys.begin(), keys.end(), order.begin(), [](const SortKey& key) { return key.row; });
}

void InsertRow(std::vector<quint32>& order, quint32 row, const PackedRows& rows, int column, bool descending) {
  const auto key = [&rows, column](quint32 of) { return KeyOf(rows.At(of, column), of); };
  const IsBefore isBefore(rows, column, descending);
  const auto place = std::upper_bound(order.begin(), order.end(), row,
                                      [&](quint32 left, quint32 right) { return isBefore(key(left), key(right)); });
  order.insert(place, row);
}

}  // namespace qbx
