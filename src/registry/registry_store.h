// A registry: hives hold keys, keys hold named, typed values.

#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace qbx {

enum class RegistryHive : quint32 {
  kCurrentUser = 0x80000001,   ///< HKEY_CURRENT_USER
  kLocalMachine = 0x80000002,  ///< HKEY_LOCAL_MACHINE
};

enum class RegistryType : quint32 { kText = 1 /* REG_SZ */, kBinary = 3 /* REG_BINARY */, kNumber = 4 /* REG_DWORD */ };

struct RegistryValue {
  QString name;  ///< empty for the key's default value
  RegistryType type = RegistryType::kText;
  QString data;  ///< a number as decimal digits, binary as pairs of hexadecimal digits
};

/// Where registry keys are kept. The parts of a key's path are separated by "\"; the path does not begin with one. Keys
/// and value names are matched without regard to case and keep the case they were made with. They are listed in the
/// order of creation.
///
/// A failure is returned as a text (empty when it worked), so that `CRegistry` can report it in the product's words.
class RegistryStore {
 public:
  virtual ~RegistryStore() = default;

  [[nodiscard]] virtual bool KeyExists(RegistryHive hive, const QString& key) = 0;
  /// \return the key's values; nothing when the key is missing or the hive cannot be read (`error` then says why)
  [[nodiscard]] virtual std::optional<std::vector<RegistryValue>> Values(RegistryHive hive, const QString& key,
                                                                         QString* error) = 0;
  [[nodiscard]] virtual QStringList SubKeys(RegistryHive hive, const QString& key) = 0;
  /// Makes one key; its parent must exist. An existing key stays as it is.
  [[nodiscard]] virtual QString CreateKey(RegistryHive hive, const QString& key) = 0;
  /// Removes a key that has no sub-keys.
  [[nodiscard]] virtual QString DeleteKey(RegistryHive hive, const QString& key) = 0;
  /// Adds or replaces one value of an existing key.
  [[nodiscard]] virtual QString SetValue(RegistryHive hive, const QString& key, const RegistryValue& value) = 0;
  [[nodiscard]] virtual QString DeleteValue(RegistryHive hive, const QString& key, const QString& name) = 0;
};

/// The real one keeps one text file per hive. See file_registry_store.h.

}  // namespace qbx
