#include "printing/ui/window_outlet.h"

#include <QWidget>

#include "printing/ui/frmSelectPrinter.h"
#include "reports/report_error.h"

namespace qbx {

TakenOut WindowOutlet::Preview(const ReportRun& run) {
  frmReportView window(run, parts_, parent_);
  window.Initialise();
  layout_.RestoreWindow(window, window.objectName());
  TakenOut taken = window.ShowReport();
  layout_.SaveWindow(window, window.objectName());
  return taken;
}

TakenOut WindowOutlet::Print(const ReportRun& run, bool prompt) {
  PrintChoice choice;
  if (prompt) {
    frmSelectPrinter dialog(parts_.printers, run.printer, run.report.CountsDocuments(), parent_);
    if (!dialog.ShowSelectPrinter()) return {};
    choice = dialog.Choice();
  } else {
    const std::vector<Printer> printers = parts_.printers.List();
    const int first = FirstChoice(printers, run.printer);
    if (first < 0) throw ReportError{QStringLiteral("No printer is set up on this computer.")};
    choice.printer = printers[static_cast<size_t>(first)];
  }
  ReportPages pages(run.report, run.report.LayOut(run.database));
  return PrintPages(run, pages, parts_.printers, choice, [this] {
    parts_.diagnostics.ui.PumpEvents();
    return true;
  });
}

}  // namespace qbx
