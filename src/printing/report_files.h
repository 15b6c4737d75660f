// Finding report definitions.

#pragma once

#include <QString>

#include "settings/options.h"

namespace qbx {

/// The path of a definition: in the folder `Reports` below the program folder, otherwise in the program folder itself.
/// A definition of this program that is in neither is first copied to `Reports`, where people can change it. Names are
/// found ignoring case.
/// \return the path for a new file when there is none
[[nodiscard]] QString ReportPath(const QString& programFolder, const QString& name);

/// The definition of the letters: "MarketingLetter_" with the customer code if that file exists, otherwise the general
/// one with the prefix in the options.
[[nodiscard]] QString LetterReportPath(const QString& programFolder, const Options& options);

}  // namespace qbx
