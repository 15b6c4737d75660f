// Which edition of the host product this is, and the names that depend on it.

#pragma once

#include <QString>

#include "platform/ini_file.h"
#include "settings/startup_values.h"

namespace qbx {

/// The module's own title, the same in every edition.
inline constexpr char kProgramTitle[] = "QBX Marketing & Reporting Module";

/// Names that depend on the edition.
struct EditionNames {
  QString productKey;    ///< registry path, ends with "\"
  QString databaseName;  ///< base name and suffix
};

/// \param instance        appended to the product key after a blank unless empty
/// \param databaseSuffix  appended to the database's base name
[[nodiscard]] EditionNames EditionNamesFor(const EditionFlags& edition, const QString& instance,
                                           const QString& databaseSuffix);

/// Sets title, ProductKey and database name of the start-up values from their edition, instance and suffix.
void WorkOutEditionNames(StartupValues& startup);

/// Finds the edition by the host product's program files, ignoring case. A file that cannot be looked for counts as
/// missing.
/// \param programFolder  with or without a separator at the end
[[nodiscard]] EditionFlags DetectEdition(const QString& programFolder);

/// The edition of a program folder: its program files, and the code of its INI file.
[[nodiscard]] EditionFlags EditionOfFolder(const QString& programFolder, const IniFile& ini);

/// "DA" turns vehicle-sales on, "HO" truck, "MX" boat; any other code changes nothing. Trimmed, without regard to case.
void ApplyEditionCode(EditionFlags& edition, const QString& code);

}  // namespace qbx
