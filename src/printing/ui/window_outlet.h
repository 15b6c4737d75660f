// Reports in windows and on printers.

#pragma once

#include <QWidget>

#include "printing/ui/frmReportView.h"
#include "settings/ui/window_layout.h"

namespace qbx {

/// Shows a report in `frmReportView`.
class WindowOutlet final : public ReportOutlet {
 public:
  WindowOutlet(Printers& printers, EventLog& events, const Diagnostics& diagnostics, WindowLayout& layout,
               QWidget* parent)
      : service_(printers, diagnostics),
        parts_{.printers = service_, .events = events, .diagnostics = diagnostics},
        layout_(layout),
        parent_(parent) {}

  TakenOut Preview(const ReportRun& run) override;
  /// Prints on the user's printer for reports, else on the system's default, or on the one chosen in the dialog.
  TakenOut Print(const ReportRun& run, bool prompt) override;

 private:
  PrintService service_;
  ReportViewParts parts_;
  WindowLayout& layout_;
  QWidget* parent_;
};

}  // namespace qbx
