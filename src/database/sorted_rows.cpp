#include "database/sorted_rows.h"

#include <algorithm>
#include <numeric>

#include "database/row_order.h"

namespace qbx {
namespace {

/// Up to this number, changed rows are placed one by one.
constexpr std::size_t kFewMoved = 64;

}  // namespace

void SortedRows::SortBy(int column, bool descending) {
  if (column != column_ || descending != descending_) Forget();
  column_ = column;
  descending_ = descending;
}

void SortedRows::Changed(quint32 row, int column, qint64 changes) {
  if (changes_ != changes - 1) return;
  changes_ = changes;
  if (column == column_ && moved_.size() <= kFewMoved) moved_.push_back(row);
}

const std::vector<quint32>& SortedRows::Of(const PackedRows& rows, qint64 changes) {
  if (changes_ != changes || moved_.size() > kFewMoved) {
    rows_.resize(static_cast<std::size_t>(rows.Count()));
    std::iota(rows_.begin(), rows_.end(), 0U);
    SortRows(rows_, rows, column_, descending_);
  } else if (!moved_.empty()) {
    std::erase_if(rows_, [this](quint32 row) { return std::find(moved_.begin(), moved_.end(), row) != moved_.end(); });
    std::sort(moved_.begin(), moved_.end());
    moved_.erase(std::unique(moved_.begin(), moved_.end()), moved_.end());
    for (const quint32 row : moved_)
      InsertRow(rows_, row, rows, column_, descending_);
  }
  moved_.clear();
  changes_ = changes;
  return rows_;
}

}  // namespace qbx
