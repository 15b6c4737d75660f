// The printers of CUPS.

#pragma once

#include "platform/printers.h"

namespace qbx {

/// Asks the print service that this computer's CUPS settings name.
class CupsPrinters : public Printers {
 public:
  [[nodiscard]] std::vector<Printer> List(const std::stop_token& stop) override;
  [[nodiscard]] PrinterAbilities AbilitiesOf(const QString& deviceId, const std::stop_token& stop) override;
  void Print(const QString& deviceId, const PrintJob& job, const std::stop_token& stop) override;
};

}  // namespace qbx
