// The column layout of a grid, kept per user in the registry.

#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "settings/registry_values.h"

namespace qbx {

/// The column at one position of a grid.
struct GridColumnPlace {
  int column = 0;                      ///< index in the grid's column collection
  int width = 0;                       ///< logical pixels
  std::optional<bool> visible = true;  ///< nothing: not kept

  friend bool operator==(const GridColumnPlace&, const GridColumnPlace&) = default;
};

struct GridLayout {
  std::vector<GridColumnPlace> places;  ///< in the order shown; empty: nothing was kept
  int rowHeight = 0;                    ///< logical pixels, 0: not set

  friend bool operator==(const GridLayout&, const GridLayout&) = default;
};

/// Key below the user's name: the window's name and the grid's, "DataGrid" for one named "dbgData", with "(index)" for an
/// element of an array.
[[nodiscard]] QString GridLayoutKey(const QString& window, const QString& grid,
                                    std::optional<int> index = std::nullopt);

/// One entry, "W:120,V:-1,C:03".
[[nodiscard]] QString GridPlaceText(const GridColumnPlace& place);
[[nodiscard]] std::optional<GridColumnPlace> ParseGridPlace(const QString& text);

/// Writes one value per place ("00-", "01-" ...).
void SaveGridLayout(RegistryValues& registry, const QString& key, const GridLayout& layout);
/// Reads the entries up to the first position that has none; what cannot be read is left out.
[[nodiscard]] GridLayout LoadGridLayout(RegistryValues& registry, const QString& key);

}  // namespace qbx
