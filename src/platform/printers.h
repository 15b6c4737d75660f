// The printers of the system.

#pragma once

#include <QSizeF>
#include <QString>
#include <QStringList>
#include <stop_token>
#include <vector>

namespace qbx {

struct Printer {
  QString deviceId;  ///< the name of the print queue
  QString name;      ///< the name that is shown to people
  QString driver;
  QString port;
  bool isDefault = false;
};

struct PrinterAbilities {
  bool bothSides = false;
  QStringList trays;  ///< names that a job can ask for; empty when there is no choice
};

/// A PDF file for a printer. Its pages are printed unchanged.
struct PrintJob {
  QString file;
  QString title;
  int copies = 1;
  bool bothSides = false;
  QString tray = {};  ///< empty for the printer's default
  QSizeF paper = {};  ///< upright, in millimetres; empty for the queue's default
};

/// Why the print service failed.
struct PrinterError {
  QString text;  ///< shown to the user
};

/// Calls block as long as the print service does, may come from any thread, and throw PrinterError. A call whose `stop`
/// is requested soon ends with an error.
class Printers {
 public:
  virtual ~Printers() = default;
  [[nodiscard]] virtual std::vector<Printer> List(const std::stop_token& stop) = 0;
  [[nodiscard]] virtual PrinterAbilities AbilitiesOf(const QString& deviceId, const std::stop_token& stop) = 0;
  /// Returns when the job is in the printer's queue. Whether paper came out is unknown.
  virtual void Print(const QString& deviceId, const PrintJob& job, const std::stop_token& stop) = 0;
};

}  // namespace qbx
