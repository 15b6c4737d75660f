// A report on the screen.

#pragma once

#include <QDialog>
#include <QTimer>
#include <memory>

#include "database/event_log.h"
#include "diagnostics/diagnostics.h"
#include "printing/print_choice.h"

namespace Ui {
class frmReportView;
}

namespace qbx {

/// What the window works with. References only.
struct ReportViewParts {
  Printers& printers;
  EventLog& events;
  Diagnostics diagnostics;
};

/// Shows the pages of a report one at a time. The first page shows at once; the others are laid out while the user looks.
class frmReportView : public QDialog {
 public:
  frmReportView(const ReportRun& run, const ReportViewParts& parts, QWidget* parent);
  ~frmReportView() override;

  int iRecord_Type = 0;
  QString sReportFile;
  bool bLandscape = false;
  int iCopies = 1;
  QString stPrinter;  ///< the printer that is chosen at first

  /// Reads the rows and lays out the first page.
  /// \throws ReportError, DatabaseError
  void Initialise();
  /// Shows the window until the user closes it.
  /// \return what was printed or saved
  TakenOut ShowReport();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Connect();
  void LayOutMore();
  void StayInTouch();
  void NoteMisfits();
  void GoTo(int number);
  void ShowCount();
  void Zoom(int steps);
  void Find();
  void Print();
  void Export();
  void Guarded(const QString& status, const std::function<TakenOut(const std::function<bool()>& goesOn)>& work);
  bool Attempt(const std::function<void()>& work);

  std::unique_ptr<Ui::frmReportView> ui_;
  ReportRun run_;
  ReportViewParts parts_;
  std::unique_ptr<ReportPages> pages_;
  QTimer layOut_;
  QTimer stayInTouch_;
  int page_ = 1;
  bool working_ = false;
  QStringList misfits_;
  int noted_ = 0;  // pages whose misfits are named
  TakenOut taken_;
};

}  // namespace qbx
