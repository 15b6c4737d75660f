// Where a report goes out.

#pragma once

#include <QString>

namespace qbx {

struct ReportPlace {
  enum class Kind { kFile, kPrinter };
  Kind kind = Kind::kFile;
  QString name = {};  ///< of the file, or as the printer is shown to the user
};

}  // namespace qbx
