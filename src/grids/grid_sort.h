// The sort order of a grid.

#pragma once

#include <QString>

namespace qbx {

struct GridSort {
  QString column;  ///< field; empty when unsorted
  bool descending = false;

  friend bool operator==(const GridSort&, const GridSort&) = default;
};

/// "[column] ASC" or "[column] DESC"; empty while unsorted.
[[nodiscard]] QString SortText(const GridSort& sort);
/// Reads the text of `SortText`; brackets may be missing, and so may the direction (ascending then).
[[nodiscard]] GridSort ParseSort(const QString& text);
/// The order after a click on a heading: the same column changes its direction, another one begins ascending.
[[nodiscard]] GridSort SortAfterClick(const GridSort& now, const QString& column);

}  // namespace qbx
