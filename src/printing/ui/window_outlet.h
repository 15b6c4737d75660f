// Reports in windows and on printers.

#pragma once

#include "platform/printers.h"
#include "printing/ui/frmReportView.h"
#include "settings/ui/window_layout.h"

namespace qbx {

/// Shows a report in `frmReportView`, which remembers where it stood.
class WindowOutlet final : public ReportOutlet {
 public:
  WindowOutlet(const ReportViewParts& parts, WindowLayout& layout, QWidget* parent)
      : parts_(parts), layout_(layout), parent_(parent) {}

  TakenOut Preview(const ReportRun& run) override;
  /// Prints on the user's printer for reports, or on the system's default, or on that which the dialog names.
  TakenOut Print(const ReportRun& run, bool prompt) override;

 private:
  ReportViewParts parts_;
  WindowLayout& layout_;
  QWidget* parent_;
};

}  // namespace qbx
