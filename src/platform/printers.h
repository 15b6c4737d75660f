// The printers of the system.

#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace qbx {

struct Printer {
  QString deviceId;  ///< the queue's own name
  QString name;      ///< as people know it
  QString driver;
  QString port;
  bool isDefault = false;
};

struct PrinterAbilities {
  bool bothSides = false;
  QStringList trays;  ///< names that a job can ask for; empty: there is no choice
};

/// A PDF file for a printer. Its pages are printed as they are.
struct PrintJob {
  QString file;
  QString title;
  int copies = 1;
  bool bothSides = false;
  QString tray = {};  ///< empty: the printer's own choice
};

/// Calls may take as long as the print service does.
class Printers {
 public:
  virtual ~Printers() = default;
  /// \return none when the print service cannot be reached
  [[nodiscard]] virtual std::vector<Printer> List() = 0;
  [[nodiscard]] virtual PrinterAbilities AbilitiesOf(const QString& deviceId) = 0;
  /// \return what went wrong; empty when the job was taken
  [[nodiscard]] virtual QString Print(const QString& deviceId, const PrintJob& job) = 0;
};

}  // namespace qbx
