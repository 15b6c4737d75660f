#include "printing/ui/window_outlet.h"

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
    std::optional<std::vector<Printer>> printers = service_.List();
    if (!printers) return {};
    frmSelectPrinter dialog(service_, std::move(*printers), run.printer, run.report.CountsDocuments(), parent_);
    if (!dialog.ShowSelectPrinter()) return {};
    choice = dialog.Choice();
  } else {
    const std::optional<Printer> printer = DefaultPrinter(service_, run.printer);
    if (!printer) return {};
    choice.printer = *printer;
  }
  ReportPages pages(run.report, run.report.LayOut(run.database));
  return PrintPages(run, pages, service_, choice, [this] {
    parts_.diagnostics.ui.PumpEvents();
    return true;
  });
}

}  // namespace qbx
