#include "support/memory_registry_store.h"

namespace qbx::test {

void MemoryRegistryStore::Put(RegistryHive hive, const QString& key, const QString& name, const QString& text) {
  Tree(hive).MakePath(key);
  (void)Tree(hive).SetValue(key, {name, RegistryType::kText, text});
}

QString MemoryRegistryStore::Get(RegistryHive hive, const QString& key, const QString& name) {
  const RegistryKey* found = Tree(hive).Find(key);
  const RegistryValue* value = found == nullptr ? nullptr : found->FindValue(name);
  return value == nullptr ? QString() : value->data;
}

bool MemoryRegistryStore::KeyExists(RegistryHive hive, const QString& key) {
  return Tree(hive).Find(key) != nullptr;
}

std::optional<std::vector<RegistryValue>> MemoryRegistryStore::Values(RegistryHive hive, const QString& key, QString*) {
  const RegistryKey* found = Tree(hive).Find(key);
  if (found == nullptr) return std::nullopt;
  return found->values;
}

QStringList MemoryRegistryStore::SubKeys(RegistryHive hive, const QString& key) {
  const RegistryKey* found = Tree(hive).Find(key);
  return found == nullptr ? QStringList() : found->SubKeyNames();
}

QString MemoryRegistryStore::CreateKey(RegistryHive hive, const QString& key) {
  return writeError.isEmpty() ? Tree(hive).CreateKey(key) : writeError;
}

QString MemoryRegistryStore::DeleteKey(RegistryHive hive, const QString& key) {
  return writeError.isEmpty() ? Tree(hive).DeleteKey(key) : writeError;
}

QString MemoryRegistryStore::SetValue(RegistryHive hive, const QString& key, const RegistryValue& value) {
  return writeError.isEmpty() ? Tree(hive).SetValue(key, value) : writeError;
}

QString MemoryRegistryStore::DeleteValue(RegistryHive hive, const QString& key, const QString& name) {
  return writeError.isEmpty() ? Tree(hive).DeleteValue(key, name) : writeError;
}

}  // namespace qbx::test
