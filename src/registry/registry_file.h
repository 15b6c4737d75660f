// The text of a registry hive's file.

#pragma once

#include <QByteArray>
#include <QString>

#include "registry/registry_tree.h"

namespace qbx {

/// Reads the text of a hive's file (UTF-8) into an empty tree.
/// \param rootName  the name before every key, such as "HKEY_LOCAL_MACHINE"
/// \return which line is wrong and why; empty when the text was read. An empty text is an empty hive.
[[nodiscard]] QString ParseRegistryFile(const QByteArray& bytes, const QString& rootName, RegistryTree* tree);

/// The text that `ParseRegistryFile` reads back as the same tree. The comments of a key follow its line.
[[nodiscard]] QByteArray FormatRegistryFile(const RegistryTree& tree, const QString& rootName);

/// \return why a value cannot be stored (an invalid number, a NUL in a text); empty when it can
[[nodiscard]] QString CheckRegistryValue(const RegistryValue& value);

}  // namespace qbx
