// The column layout of a grid, kept per user in the registry.

#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "settings/registry_values.h"

namespace qbx {

/// A column of a grid and its place.
struct GridColumnPlace {
  int position = 0;                    ///< in the order shown
  int column = 0;                      ///< index in the grid's column collection
  int width = 0;                       ///< logical pixels
  std::optional<bool> visible = true;  ///< nothing when it is not kept
  QString name = {};  ///< field of the column; empty in entries that were written before names were kept

  friend bool operator==(const GridColumnPlace&, const GridColumnPlace&) = default;
};

struct GridLayout {
  std::vector<GridColumnPlace> places;  ///< by position; only the places that are kept
  int rowHeight = 0;                    ///< logical pixels; 0 when it is not set

  friend bool operator==(const GridLayout&, const GridLayout&) = default;
};

/// The registry key below the user's name: the names of the window and the grid; "DataGrid" for a grid named "dbgData";
/// with "(index)" for an element of an array.
[[nodiscard]] QString GridLayoutKey(const QString& window, const QString& grid,
                                    std::optional<int> index = std::nullopt);

/// One entry, "W:120,V:-1,C:03,N:Lastname,". The name of its value is the position. Visibility is ignored in an entry
/// without a field name, because the column at that index may have changed.
[[nodiscard]] QString GridPlaceText(const GridColumnPlace& place);
[[nodiscard]] std::optional<GridColumnPlace> ParseGridPlace(const QString& text);

/// Writes one value per place, named by its position ("00-", "01-" ...), and empties the values of positions that are
/// no longer kept.
/// \param columns  number of columns of the grid
void SaveGridLayout(RegistryValues& registry, const QString& key, const GridLayout& layout, int columns);
/// Reads the entries. Entries of columns or positions that the grid lacks, and unreadable ones, are left out. A column
/// with a kept name is found by that name.
/// \param fields  of the grid's columns, by index
[[nodiscard]] GridLayout LoadGridLayout(RegistryValues& registry, const QString& key, const QStringList& fields);

/// The columns of a grid in the order of a layout: kept columns at their positions, the others between them in their
/// own order.
[[nodiscard]] std::vector<int> ColumnOrder(const GridLayout& layout, int columns);

}  // namespace qbx
