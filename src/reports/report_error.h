// What is wrong with a report, and where.

#pragma once

#include <QString>

namespace qbx {

/// Thrown by everything in this folder that can fail.
struct ReportError {
  QString text;       ///< a sentence for the user
  QString file = {};  ///< the definition, empty where it is not its fault
  int line = 0;       ///< of the file, 0: none in particular

  /// "FILE, line 12: text"
  [[nodiscard]] QString Description() const;
};

/// Thrown where neither the program nor the definition is at fault: no page between those that were asked for, a file that cannot be written, a printer that
/// takes nothing. The text says all that there is to say.
struct PlainReportError : ReportError {};

}  // namespace qbx
