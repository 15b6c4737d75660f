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
  QStringList comments;  ///< lines of the hive's file that belong to the key and mean nothing to the program

  /// \return the value of that name, without regard to case; null when there is none
  [[nodiscard]] const RegistryValue* FindValue(const QString& valueName) const;
  [[nodiscard]] QStringList SubKeyNames() const;
};

/// The rules of a hive: paths, case, order, what may be made and removed. Paths as in `RegistryStore`; the empty path
/// is the hive itself. The changing calls return a text that says what was wrong, empty when they worked.
class RegistryTree {
 public:
  static constexpr int kDeepest = 512;  ///< levels of keys below a hive
  [[nodiscard]] static bool TooDeep(const QString& key);

  [[nodiscard]] const RegistryKey& Root() const { return root_; }
  /// \return null when there is no such key
  [[nodiscard]] const RegistryKey* Find(const QString& key) const;

  [[nodiscard]] QString CreateKey(const QString& key);
  [[nodiscard]] QString DeleteKey(const QString& key);
  [[nodiscard]] QString SetValue(const QString& key, const RegistryValue& value);
  [[nodiscard]] QString DeleteValue(const QString& key, const QString& name);
  /// The key, made with all that is missing above it. It must not be too deep.
  RegistryKey& MakePath(const QString& key);

 private:
  RegistryKey root_;
};

}  // namespace qbx
