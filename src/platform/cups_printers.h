// The printers of CUPS.

#pragma once

#include "platform/printers.h"

namespace qbx {

/// Asks the print service that CUPS is set up with on this computer.
class CupsPrinters : public Printers {
 public:
  [[nodiscard]] std::vector<Printer> List() override;
  [[nodiscard]] PrinterAbilities AbilitiesOf(const QString& deviceId) override;
  [[nodiscard]] QString Print(const QString& deviceId, const PrintJob& job) override;
};

}  // namespace qbx
