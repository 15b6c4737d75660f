// What a grid is sorted by.

#pragma once

#include <QString>

namespace qbx {

struct GridSort {
  QString column;  ///< field; empty: unsorted
  bool descending = false;

  friend bool operator==(const GridSort&, const GridSort&) = default;
};

/// "[column] ASC" or "[column] DESC"; empty while unsorted.
[[nodiscard]] QString SortText(const GridSort& sort);
/// Reads such a text; brackets and the direction may be missing (then ascending).
[[nodiscard]] GridSort ParseSort(const QString& text);
/// The order after a click on a heading: the same column turns round, another one begins ascending.
[[nodiscard]] GridSort SortAfterClick(const GridSort& now, const QString& column);

}  // namespace qbx
