// Where report definitions stand.

#pragma once

#include <QString>

#include "settings/options.h"

namespace qbx {

/// The path of a definition: in the folder `Reports` below the program folder, else in the program folder itself. One of the program's own that is in
/// neither is put into `Reports` first, where people can change it. Names are found without regard to case.
/// \return where it would stand, when there is none
[[nodiscard]] QString ReportPath(const QString& programFolder, const QString& name);

/// The definition of the letters: "MarketingLetter_" with the customer code behind, when there is such a file, else the general one with the prefix that
/// the options name.
[[nodiscard]] QString LetterReportPath(const QString& programFolder, const Options& options);

}  // namespace qbx
