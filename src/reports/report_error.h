// A fault in a report, and its place.

#pragma once

#include <QString>

namespace qbx {

/// Thrown by this folder for every failure but a database's.
struct ReportError {
  QString text;       ///< a sentence for the user
  QString file = {};  ///< the definition; empty when the fault is not in it
  int line = 0;       ///< of the file; 0 for none

  /// The text "FILE, line 12: text".
  [[nodiscard]] QString Description() const;
};

/// Thrown when neither the program nor the definition is at fault: no page in the chosen range, a file that cannot be
/// written, a printer that accepts nothing. The text needs no further explanation.
struct PlainReportError : ReportError {};

}  // namespace qbx
