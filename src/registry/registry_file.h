// The text of a registry hive's file.

#pragma once

#include <QByteArray>
#include <QString>

#include "registry/registry_tree.h"

namespace qbx {

/// Reads the text of a hive's file, UTF-8, into an empty tree.
/// \param rootName  the name before every key, such as "HKEY_LOCAL_MACHINE"
/// \return what is wrong with which line; empty when the text was read. No bytes at all are an empty hive.
[[nodiscard]] QString ParseRegistryFile(const QByteArray& bytes, const QString& rootName, RegistryTree* tree);

/// The text that `ParseRegistryFile` reads back as the same tree. Comments of a key stand below its line.
[[nodiscard]] QByteArray FormatRegistryFile(const RegistryTree& tree, const QString& rootName);

/// \return why a value cannot be stored (a number that is none, a NUL in a text); empty when it can
[[nodiscard]] QString CheckRegistryValue(const RegistryValue& value);

}  // namespace qbx
