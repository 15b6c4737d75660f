// The column layout of a table view: taken down and put back.

#pragma once

#include <QString>

#include "grids/grid_layout.h"
#include "settings/registry_values.h"

class QTableView;

namespace qbx {

/// Stores order, width and visibility of the columns of a grid for the current user.
/// \param window               name of the owner window
/// \param leaveOutVisibility   keeps only order and widths
void gridSavePosition(RegistryValues& registry, const QString& window, bool leaveOutVisibility, QTableView& grid);

/// Puts the stored layout back; columns that the grid does not have are passed over. Without a stored layout the grid
/// stays as it is.
/// \return the stored row height in logical pixels, 0 when none is stored
int InitGridPosition(RegistryValues& registry, const QString& window, QTableView& grid);

}  // namespace qbx
