// Storing and restoring the column layout of a table view.

#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

#include "grids/grid_layout.h"
#include "settings/registry_values.h"

class QTableView;

namespace qbx {

/// Which parts of a grid's columns are stored for the user.
struct KeptColumns {
  QStringList fields;   ///< of the grid's columns, by index
  QSet<int> columns;    ///< columns to store; a column that the user never changed is left out
  QSet<QString> fixed;  ///< fields in lower case whose visibility the user cannot change
};

/// Stores place, width and visibility of a grid's columns for the current user.
/// \param window               name of the owner window
/// \param leaveOutVisibility   stores only places and widths
void gridSavePosition(RegistryValues& registry, const QString& window, bool leaveOutVisibility, QTableView& grid,
                      const KeptColumns& kept);

/// Restores the stored layout and ignores columns that the grid lacks. Without a stored layout the grid does not
/// change.
/// \param kept    its columns are set to those in the layout
/// \param hidden  set to the fields, in lower case, that the user hid
/// \return the stored row height in logical pixels, 0 when none is stored
int InitGridPosition(RegistryValues& registry, const QString& window, QTableView& grid, KeptColumns& kept,
                     QSet<QString>& hidden);

}  // namespace qbx
