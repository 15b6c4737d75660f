// The rows of a campaign in a grid.

#pragma once

#include "grids/ui/cDataGrid.h"
#include "startup/application.h"

namespace qbx {

/// Shows rows with their flags as ticks and the captions of the edition, without columns that are never shown. A closed
/// recordset empties the grid.
void ShowCampaignRows(cDataGrid& grid, Recordset& rows, const Application& app);

}  // namespace qbx
