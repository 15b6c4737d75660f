#include "database/row_order.h"

#include <algorithm>
#include <bit>
#include <span>

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

/// Compares two cells of one column and rank.
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

/// Decides most comparisons of a sort without the cell. When two cells differ in rank and head, their order is that of
/// rank and head.
struct SortKey {
  quint64 head = 0;
  quint64 next = 0;  ///< the head of the text behind `head`; 0 when `head` has characters beyond ASCII
  quint32 row = 0;
  quint16 rank = 0;
  bool whole = true;  ///< `head` and `next` hold the whole text
};

/// A number whose order as an unsigned integer is the order of the double.
quint64 OrderedBits(double number) {
  const auto bits = std::bit_cast<quint64>(number == 0 ? 0.0 : number);
  constexpr quint64 kSign = quint64{1} << 63U;
  return (bits & kSign) != 0 ? ~bits : bits | kSign;
}

/// Whether a head has a character beyond ASCII. All of them look the same in a head.
bool BeyondAscii(quint64 head) {
  return (head & 0x8080808080808080U) != 0;
}

/// Fills a key from a text, or from the rest of a text.
void SetHeads(SortKey& key, std::string_view text) {
  key.head = FoldedStart(text);
  key.next = 0;
  key.whole = false;
  if (BeyondAscii(key.head)) return;
  const std::string_view behind = BehindStart(text);
  key.next = FoldedStart(behind);
  // A zero character looks like the end of the text.
  key.whole = !BeyondAscii(key.next) && BehindStart(behind).empty() && text.find('\0') == std::string_view::npos;
}

SortKey KeyOf(const Cell& cell, quint32 row) {
  SortKey key{.row = row, .rank = static_cast<quint16>(Rank(cell))};
  if (cell.type == ValueType::kText)
    SetHeads(key, cell.utf8);
  else if (cell.type != ValueType::kNull)
    key.head = OrderedBits(NumberOf(cell));
  return key;
}

/// Whether one row comes before another.
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

constexpr quint16 kTextRank = 2;
constexpr int kMostHeads = 8;  // each is found by walking from the start of the text
constexpr qint64 kExactInDouble = qint64{1} << 50;

/// Sorts by heads, and rows with equal heads by the heads behind them. Comparing whole texts would read two texts from
/// distant memory each time.
class Sorting {
 public:
  Sorting(const PackedRows& rows, int column, bool descending)
      : rows_(rows), column_(column), descending_(descending) {}

  /// \param heads  how many heads of each text were compared already and are equal
  void Sort(std::span<SortKey> keys, int heads) {
    std::sort(keys.begin(), keys.end(), [descending = descending_](const SortKey& left, const SortKey& right) {
      if (left.rank != right.rank) return (left.rank < right.rank) != descending;
      if (left.head != right.head) return (left.head < right.head) != descending;
      if (left.next != right.next) return (left.next < right.next) != descending;
      return left.row < right.row;
    });
    for (auto first = keys.begin(); first != keys.end();) {
      const auto last = std::find_if(first, keys.end(), [&first](const SortKey& key) {
        return key.rank != first->rank || key.head != first->head || key.next != first->next;
      });
      if (last - first > 1) SortAlike({first, last}, heads + 2);
      first = last;
    }
  }

 private:
  void SortAlike(std::span<SortKey> keys, int heads) {
    if (keys.front().rank != kTextRank) {
      if (!SameNumber(keys.front())) SortWhole(keys);
      return;
    }
    if (std::all_of(keys.begin(), keys.end(), [](const SortKey& key) { return key.whole; })) return;
    if (BeyondAscii(keys.front().head) || BeyondAscii(keys.front().next) || heads > kMostHeads) return SortWhole(keys);
    bool zero = false;  // a zero character looks like the end of a text
    for (SortKey& key : keys) {
      std::string_view text = rows_.At(key.row, column_).utf8;
      zero = zero || text.find('\0') != std::string_view::npos;
      for (int i = 0; i < heads; ++i)
        text = BehindStart(text);
      SetHeads(key, text);
    }
    if (zero) return SortWhole(keys);
    Sort(keys, heads);
  }

  /// Sorts by whole cells, when heads cannot decide.
  void SortWhole(std::span<SortKey> keys) {
    for (SortKey& key : keys)
      key.head = key.next = 0;
    std::sort(keys.begin(), keys.end(), IsBefore(rows_, column_, descending_));
  }

  /// Whether equal heads of numbers mean equal numbers.
  [[nodiscard]] bool SameNumber(const SortKey& key) const {
    const Cell cell = rows_.At(key.row, column_);
    return cell.type == ValueType::kNull || cell.type == ValueType::kDouble ||
           (cell.integer < kExactInDouble && cell.integer > -kExactInDouble);
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
  Sorting(rows, column, descending).Sort(keys, 0);
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
