// The column layout of a grid, kept per user in the registry.

#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "settings/registry_values.h"

namespace qbx {

/// A column of a grid and where it stands.
struct GridColumnPlace {
  int position = 0;                    ///< in the order shown
  int column = 0;                      ///< index in the grid's column collection
  int width = 0;                       ///< logical pixels
  std::optional<bool> visible = true;  ///< nothing: not kept
  QString name = {};  ///< field of the column; empty in entries that were written before names were kept

  friend bool operator==(const GridColumnPlace&, const GridColumnPlace&) = default;
};

struct GridLayout {
  std::vector<GridColumnPlace> places;  ///< by position; only those that are kept
  int rowHeight = 0;                    ///< logical pixels, 0: not set

  friend bool operator==(const GridLayout&, const GridLayout&) = default;
};

/// Key below the user's name: the window's name and the grid's, "DataGrid" for one named "dbgData", with "(index)" for an
/// element of an array.
[[nodiscard]] QString GridLayoutKey(const QString& window, const QString& grid,
                                    std::optional<int> index = std::nullopt);

/// One entry, "W:120,V:-1,C:03,N:Lastname,"; its position is the name of the value. Without a name visibility is not read: the column at that
/// index may be another one by now.
[[nodiscard]] QString GridPlaceText(const GridColumnPlace& place);
[[nodiscard]] std::optional<GridColumnPlace> ParseGridPlace(const QString& text);

/// Writes one value per place, named by its position ("00-", "01-" ...), and empties those of positions that are not kept any more.
/// \param columns  of the grid
void SaveGridLayout(RegistryValues& registry, const QString& key, const GridLayout& layout, int columns);
/// Reads the entries; those of columns or positions that the grid does not have, and what cannot be read, are left out. A column that is kept by
/// its name is found by it, wherever it stands now.
/// \param fields  of the grid's columns, by index
[[nodiscard]] GridLayout LoadGridLayout(RegistryValues& registry, const QString& key, const QStringList& fields);

/// The columns of a grid in the order of a layout: those that are kept at their positions, the others between them in their own order.
[[nodiscard]] std::vector<int> ColumnOrder(const GridLayout& layout, int columns);

}  // namespace qbx
