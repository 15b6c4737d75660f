#include "registry/registry_tree.h"

#include <algorithm>

namespace qbx {
namespace {

bool SameName(const QString& left, const QString& right) {
  return left.compare(right, Qt::CaseInsensitive) == 0;
}

QStringList Parts(const QString& key) {
  return key.split(u'\\', Qt::SkipEmptyParts);
}

template <typename Key>
auto* FindSubKey(Key& parent, const QString& name) {
  const auto found = std::find_if(parent.subKeys.begin(), parent.subKeys.end(),
                                  [&name](const auto& subKey) { return SameName(subKey->name, name); });
  return found == parent.subKeys.end() ? nullptr : found->get();
}

auto FindIn(const std::vector<RegistryValue>& values, const QString& name) {
  return std::find_if(values.begin(), values.end(),
                      [&name](const RegistryValue& value) { return SameName(value.name, name); });
}

template <typename Key>
Key* Walk(Key& root, const QStringList& parts) {
  Key* key = &root;
  for (const QString& part : parts) {
    key = FindSubKey(*key, part);
    if (key == nullptr) return nullptr;
  }
  return key;
}

RegistryKey& AddSubKey(RegistryKey& parent, const QString& name) {
  parent.subKeys.push_back(std::make_unique<RegistryKey>());
  parent.subKeys.back()->name = name;
  return *parent.subKeys.back();
}

QString Missing(const QString& key) {
  return QStringLiteral("There is no registry key \"%1\".").arg(key);
}

}  // namespace

const RegistryValue* RegistryKey::FindValue(const QString& valueName) const {
  const auto found = FindIn(values, valueName);
  return found == values.end() ? nullptr : &*found;
}

QStringList RegistryKey::SubKeyNames() const {
  QStringList names;
  for (const auto& subKey : subKeys)
    names.append(subKey->name);
  return names;
}

const RegistryKey* RegistryTree::Find(const QString& key) const {
  return Walk(root_, Parts(key));
}

bool RegistryTree::TooDeep(const QString& key) {
  return Parts(key).size() > kDeepest;
}

RegistryKey& RegistryTree::MakePath(const QString& key) {
  RegistryKey* made = &root_;
  for (const QString& part : Parts(key)) {
    RegistryKey* next = FindSubKey(*made, part);
    made = next == nullptr ? &AddSubKey(*made, part) : next;
  }
  return *made;
}

QString RegistryTree::CreateKey(const QString& key) {
  QStringList parts = Parts(key);
  if (parts.isEmpty()) return {};
  if (TooDeep(key)) return QStringLiteral("A registry key cannot stand more than %1 levels deep.").arg(kDeepest);
  const QString name = parts.takeLast();
  RegistryKey* parent = Walk(root_, parts);
  if (parent == nullptr) return Missing(parts.join(u'\\'));
  if (FindSubKey(*parent, name) == nullptr) AddSubKey(*parent, name);
  return {};
}

QString RegistryTree::DeleteKey(const QString& key) {
  QStringList parts = Parts(key);
  if (parts.isEmpty()) return QStringLiteral("A registry hive cannot be removed.");
  const QString name = parts.takeLast();
  RegistryKey* parent = Walk(root_, parts);
  const RegistryKey* doomed = parent == nullptr ? nullptr : FindSubKey(*parent, name);
  if (doomed == nullptr) return Missing(key);
  if (!doomed->subKeys.empty()) return QStringLiteral("The registry key \"%1\" has keys below it.").arg(key);
  std::erase_if(parent->subKeys, [doomed](const auto& subKey) { return subKey.get() == doomed; });
  return {};
}

QString RegistryTree::SetValue(const QString& key, const RegistryValue& value) {
  RegistryKey* owner = Walk(root_, Parts(key));
  if (owner == nullptr) return Missing(key);
  const auto found = FindIn(owner->values, value.name);
  if (found == owner->values.end()) {
    owner->values.push_back(value);
    return {};
  }
  RegistryValue& stored = owner->values[static_cast<std::size_t>(found - owner->values.cbegin())];
  stored.type = value.type;
  stored.data = value.data;
  return {};
}

QString RegistryTree::DeleteValue(const QString& key, const QString& name) {
  RegistryKey* owner = Walk(root_, Parts(key));
  if (owner == nullptr) return Missing(key);
  const auto found = FindIn(owner->values, name);
  if (found == owner->values.end()) {
    return QStringLiteral("The registry key \"%1\" has no value \"%2\".").arg(key, name);
  }
  owner->values.erase(found);
  return {};
}

}  // namespace qbx
