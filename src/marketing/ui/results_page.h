// Tab 3: the rows that the query found.

#pragma once

#include <QHideEvent>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QWidget>
#include <memory>

#include "exporting/ui/frmSpreadsheet.h"
#include "grids/ui/cDataGrid.h"
#include "marketing/ui/results_changes.h"
#include "marketing/ui/results_finder.h"
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
  void hideEvent(QHideEvent* event) override;

 private:
  void SetUpGrid();
  void ConnectResults();
  void ConnectControls();
  void PrintRows(const Recordset& rows, const QSet<QString>& hidden, const CurrentCampaign& of);
  void ExportResults();
  void ShowRows();
  void ShowCounts();
  void ShowKind();
  void TellChange(const QString& text);
  void TellLastChange();
  void SetMethods();
  void ForgetMethods();
  [[nodiscard]] bool HasRows(const QString& action);
  // GridOwner
  void Grid_MenuOpens() override { changes_->Update(); }
  [[nodiscard]] bool EditMode() const override { return true; }
  [[nodiscard]] bool MayDeleteRows() override { return Desk().edits.MayEditShown(); }
  [[nodiscard]] bool DeleteRow(qint64 recordId, const std::function<bool()>& remove) override {
    return Desk().edits.DeleteRow(recordId, remove);
  }

  std::unique_ptr<Ui::ResultsPage> ui_;
  std::unique_ptr<ResultsChanges> changes_;  // is told of the selection until the grid is destroyed
  cDataGrid grid_;
  WindowLayout layout_;
  QPointer<frmSpreadsheet> sheet_;
  std::unique_ptr<ResultsFinder> finder_;
  bool sameQuery_ = false;  // whether rows that are displayed again come from the same query as before
};

}  // namespace qbx
