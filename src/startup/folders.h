// Where the program keeps its files.

#pragma once

#include <QString>

namespace qbx {

struct Folders {
  QString program;   ///< ends with a separator
  QString registry;  ///< one text file per hive
};

/// The program folder is `given` (headless: --folder), else QBX_PROGRAM_FOLDER, else a folder of the user's data. The
/// registry folder is QBX_REGISTRY_FOLDER, else `registry` in a program folder that was named, else a folder of the
/// user's configuration. The program folder of the user's data is made when it is missing.
[[nodiscard]] Folders FindFolders(const QString& given = {});

}  // namespace qbx
