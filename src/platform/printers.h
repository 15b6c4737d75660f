// The printers of the system.

#pragma once

#include <QSizeF>
#include <QString>
#include <QStringList>
#include <stop_token>
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
  QSizeF paper = {};  ///< upright, in millimetres; empty: what the queue is set to
};

/// Why the print service did not do what it was asked.
struct PrinterError {
  QString text;  ///< for the user
};

/// Calls may take as long as the print service does, come from any thread, and throw PrinterError. One that is told to stop ends soon, with an error.
class Printers {
 public:
  virtual ~Printers() = default;
  [[nodiscard]] virtual std::vector<Printer> List(const std::stop_token& stop) = 0;
  [[nodiscard]] virtual PrinterAbilities AbilitiesOf(const QString& deviceId, const std::stop_token& stop) = 0;
  /// Returns when the job stands in the printer's queue, which says nothing of paper.
  virtual void Print(const QString& deviceId, const PrintJob& job, const std::stop_token& stop) = 0;
};

}  // namespace qbx
