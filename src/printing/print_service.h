// The printers of the system, called without blocking the window.

#pragma once

#include <functional>
#include <optional>
#include <thread>
#include <vector>

#include "diagnostics/diagnostics.h"
#include "platform/printers.h"
#include "reports/report_error.h"

namespace qbx {

/// Thrown when nobody knows whether a printer has got a report.
struct PrintingUnknown : PlainReportError {};

/// Each call runs on its own thread while events are pumped. A longer call shows the status box with its Cancel button;
/// one that takes too long is given up. A call that was given up is told to stop and ends by itself; the destructor
/// waits for it.
class PrintService {
 public:
  PrintService(Printers& printers, const Diagnostics& diagnostics) : printers_(printers), diagnostics_(diagnostics) {}

  /// \return nothing when the user pressed Cancel
  /// \throws PlainReportError
  [[nodiscard]] std::optional<std::vector<Printer>> List();
  /// \return nothing when the user pressed Cancel
  /// \throws PlainReportError
  [[nodiscard]] std::optional<PrinterAbilities> AbilitiesOf(const QString& deviceId);
  /// Puts a file into the queue of a printer.
  /// \throws PlainReportError     the printer did not take it
  /// \throws PrintingUnknown      the user pressed Cancel, or the answer took too long
  void Print(const Printer& printer, const PrintJob& job);

 private:
  template <typename Answer>
  std::optional<Answer> Ask(const QString& text, std::chrono::seconds limit,
                            std::function<Answer(const std::stop_token&)> call);

  Printers& printers_;
  Diagnostics diagnostics_;
  std::vector<std::jthread> givenUp_;
};

}  // namespace qbx
