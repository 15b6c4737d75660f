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

/// Thrown when there is no page between those that were asked for.
struct NoPagesError : ReportError {};

}  // namespace qbx
