#include "marketing/ui/campaign_rows.h"

#include "results/flag_columns.h"
#include "results/results_view.h"

namespace qbx {

void ShowCampaignRows(cDataGrid& grid, Recordset& rows, const Application& app) {
  if (!rows.IsOpen()) return grid.DisconnectRecordset();
  const ResultsPresentation presentation = PresentResults(app.startup.edition, app.options);
  // Done first, so that no hidden column becomes the current one.
  grid.HideColumns(presentation.hiddenColumns);
  grid.HideColumns(presentation.optInColumns, !presentation.showOptIn);
  grid.FlagColumns(FlagColumns());
  grid.ConnectRecordset(rows);
  for (const ResultsPresentation::Caption& caption : presentation.captions)
    grid.SetCaption(caption.column, caption.caption);
}

}  // namespace qbx
