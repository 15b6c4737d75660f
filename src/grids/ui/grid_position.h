// The column layout of a table view: taken down and put back.

#pragma once

#include <QSet>
#include <QString>

#include "grids/grid_layout.h"
#include "settings/registry_values.h"

class QTableView;

namespace qbx {

/// Stores place, width and visibility of columns of a grid for the current user.
/// \param window               name of the owner window
/// \param leaveOutVisibility   keeps only places and widths
/// \param columns              those that are kept: what the user never changed follows the rows
void gridSavePosition(RegistryValues& registry, const QString& window, bool leaveOutVisibility, QTableView& grid,
                      const QSet<int>& columns);

/// Puts the stored layout back; columns that the grid does not have are passed over. Without a stored layout the grid
/// stays as it is.
/// \param columns  set to those that were kept
/// \return the stored row height in logical pixels, 0 when none is stored
int InitGridPosition(RegistryValues& registry, const QString& window, QTableView& grid, QSet<int>& columns);

}  // namespace qbx
