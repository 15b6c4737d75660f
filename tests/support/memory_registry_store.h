// A registry in memory.

#pragma once

#include "registry/registry_store.h"
#include "registry/registry_tree.h"

namespace qbx::test {

/// Has both hives. When `writeError` is set, every write fails with this text.
class MemoryRegistryStore final : public RegistryStore {
 public:
  QString writeError;

  /// Writes a value, and makes the keys above it. For setting up a test.
  void Put(RegistryHive hive, const QString& key, const QString& name, const QString& text);
  /// \return the value's data, empty when there is none
  [[nodiscard]] QString Get(RegistryHive hive, const QString& key, const QString& name);

  [[nodiscard]] bool KeyExists(RegistryHive hive, const QString& key) override;
  [[nodiscard]] std::optional<std::vector<RegistryValue>> Values(RegistryHive hive, const QString& key,
                                                                 QString* error) override;
  [[nodiscard]] QStringList SubKeys(RegistryHive hive, const QString& key) override;
  [[nodiscard]] QString CreateKey(RegistryHive hive, const QString& key) override;
  [[nodiscard]] QString DeleteKey(RegistryHive hive, const QString& key) override;
  [[nodiscard]] QString SetValue(RegistryHive hive, const QString& key, const RegistryValue& value) override;
  [[nodiscard]] QString DeleteValue(RegistryHive hive, const QString& key, const QString& name) override;

 private:
  RegistryTree& Tree(RegistryHive hive) { return hive == RegistryHive::kCurrentUser ? user_ : machine_; }

  RegistryTree user_;
  RegistryTree machine_;
};

}  // namespace qbx::test
