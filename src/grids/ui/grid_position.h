// The column layout of a table view: taken down and put back.

#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

#include "grids/grid_layout.h"
#include "settings/registry_values.h"

class QTableView;

namespace qbx {

/// What of a grid's columns is kept for the user.
struct KeptColumns {
  QStringList fields;   ///< of the grid's columns, by index
  QSet<int> columns;    ///< those that are kept: what the user never changed follows the rows
  QSet<QString> fixed;  ///< fields in lower case whose visibility is not the user's to say
};

/// Stores place, width and visibility of columns of a grid for the current user.
/// \param window               name of the owner window
/// \param leaveOutVisibility   keeps only places and widths
void gridSavePosition(RegistryValues& registry, const QString& window, bool leaveOutVisibility, QTableView& grid,
                      const KeptColumns& kept);

/// Puts the stored layout back; columns that the grid does not have are passed over. Without a stored layout the grid
/// stays as it is.
/// \param kept    its columns are set to those that were kept
/// \param hidden  set to the fields, in lower case, that the user hid
/// \return the stored row height in logical pixels, 0 when none is stored
int InitGridPosition(RegistryValues& registry, const QString& window, QTableView& grid, KeptColumns& kept,
                     QSet<QString>& hidden);

}  // namespace qbx
