// Tab 3: the rows that the query found.

#pragma once

#include <QPointer>
#include <memory>

#include "exporting/ui/frmSpreadsheet.h"
#include "grids/ui/cDataGrid.h"
#include "marketing/ui/wizard_page.h"

namespace Ui {
class ResultsPage;
}

namespace qbx {

class ResultsPage : public WizardPage, private GridOwner {
 public:
  explicit ResultsPage(PageParts parts);
  ~ResultsPage() override;

  [[nodiscard]] QWidget* FirstControl() override;
  /// Makes a row the current one.
  void GoToRow(qint64 recordId);
  void CampaignSetUp() override;
  void WindowCloses() override;

 protected:
  void CopyState() override;

 private:
  void SetUpGrid();
  void ConnectResults();
  void ConnectControls();
  void PrintRows(const Recordset& rows, const QSet<QString>& hidden);
  void ExportResults();
  void ShowRows();
  void ShowCount();
  void SetMethods();
  void ForgetMethods();
  [[nodiscard]] bool HasRows(const QString& action);
  // GridOwner
  [[nodiscard]] bool EditMode() const override { return true; }
  [[nodiscard]] bool MayDeleteRows() override { return Desk().edits.MayEditShown(); }

  std::unique_ptr<Ui::ResultsPage> ui_;
  cDataGrid grid_;
  WindowLayout layout_;
  QPointer<frmSpreadsheet> sheet_;
};

}  // namespace qbx
