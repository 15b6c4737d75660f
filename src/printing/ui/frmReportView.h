// The window that shows a report.

#pragma once

#include <QDialog>
#include <QKeyEvent>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QWidget>
#include <memory>

#include "database/event_log.h"
#include "diagnostics/diagnostics.h"
#include "printing/print_choice.h"

namespace Ui {
class frmReportView;
}

namespace qbx {

/// What the window works with, by reference.
struct ReportViewParts {
  PrintService& printers;
  EventLog& events;
  Diagnostics diagnostics;
};

/// Shows the pages of a report one at a time. The first page is shown at once; the others are laid out meanwhile. A
/// double-click on a group that hides its details shows them instead of the report, until the user goes back.
class frmReportView : public QDialog {
 public:
  frmReportView(const ReportRun& run, const ReportViewParts& parts, QWidget* parent);
  ~frmReportView() override;

  int iRecord_Type = 0;
  QString sReportFile;
  bool bLandscape = false;
  int iCopies = 1;
  QString stPrinter;  ///< the printer that is selected at first

  /// Reads the rows and lays out the first page.
  /// \throws ReportError, DatabaseError
  void Initialise();
  /// Shows the window until the user closes it.
  /// \return what was printed or saved
  TakenOut ShowReport();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  /// What is shown: the report, or the details of a group.
  struct View {
    std::unique_ptr<ReportPages> pages;
    QStringList group = {};  // as in `DrillDown`; empty for the report
    int page = 1;
  };

  [[nodiscard]] View& Shown() { return views_.back(); }
  [[nodiscard]] ReportPages& Pages() { return *views_.back().pages; }
  [[nodiscard]] bool ShowsDetails() const { return views_.size() > 1; }
  void Connect();
  void ConnectPages();
  void OpenView(const QStringList& group);
  void ShowView();
  void ChooseDetails();
  void Back();
  void LayOutMore();
  void StayInTouch();
  void NoteMisfits();
  void GoTo(int number);
  void ShowCount();
  void Zoom(int steps);
  void Find();
  void AboutToGoOut(const TakenOut& taken, const ReportPlace& place);
  [[nodiscard]] int CountLetters();
  void Print();
  void PrintView();
  void PrintOn(const PrintChoice& choice);
  void Export();
  void Guarded(const QString& status, const std::function<TakenOut(const std::function<bool()>& goesOn)>& work);
  bool Attempt(const std::function<void()>& work);

  std::unique_ptr<Ui::frmReportView> ui_;
  ReportRun run_;
  ReportViewParts parts_;
  std::vector<View> views_;  // the report, and the details that were opened, each from the one before
  QTimer layOut_;
  QTimer stayInTouch_;
  bool layOutBegan_ = false;
  bool working_ = false;
  QStringList misfits_;
  int noted_ = 0;  // number of pages whose misfits were reported
  TakenOut taken_;
};

}  // namespace qbx
