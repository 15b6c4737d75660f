// One registry hive in memory.

#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

#include "registry/registry_store.h"

namespace qbx {

/// A key with its values and sub-keys, each in the order of creation.
struct RegistryKey {
  QString name;
  std::vector<RegistryValue> values;
  std::vector<std::unique_ptr<RegistryKey>> subKeys;
  QStringList comments;  ///< lines of the hive's file in this key that the program does not use

  /// \return the value with this name, ignoring case; null when there is none
  [[nodiscard]] const RegistryValue* FindValue(const QString& valueName) const;
  [[nodiscard]] QStringList SubKeyNames() const;
};

/// The rules of a hive: paths, case, order, and which changes are allowed. Paths are those of `RegistryStore`; the
/// empty path is the hive itself. A changing call returns what was wrong, or an empty text when it worked.
class RegistryTree {
 public:
  static constexpr int kDeepest = 512;  ///< maximum levels of keys below a hive
  [[nodiscard]] static bool TooDeep(const QString& key);

  [[nodiscard]] const RegistryKey& Root() const { return root_; }
  /// \return null when there is no such key
  [[nodiscard]] const RegistryKey* Find(const QString& key) const;

  [[nodiscard]] QString CreateKey(const QString& key);
  [[nodiscard]] QString DeleteKey(const QString& key);
  [[nodiscard]] QString SetValue(const QString& key, const RegistryValue& value);
  [[nodiscard]] QString DeleteValue(const QString& key, const QString& name);
  /// The key, made with all missing keys above it. It must not be deeper than `kDeepest`.
  RegistryKey& MakePath(const QString& key);

 private:
  RegistryKey root_;
};

}  // namespace qbx
