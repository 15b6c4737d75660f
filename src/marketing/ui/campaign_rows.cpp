#include "marketing/ui/campaign_rows.h"

#include "results/results_view.h"

namespace qbx {

namespace {

const QStringList& FlagColumns() {
  static const QStringList columns = {QStringLiteral("Send_SMS"), QStringLiteral("Send_Email"),
                                      QStringLiteral("Send_Letter"), QStringLiteral("Processed")};
  return columns;
}

}  // namespace

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
