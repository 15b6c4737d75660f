// One registry key under one hive, as the program reads and writes it.

#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "diagnostics/diagnostics.h"
#include "registry/registry_store.h"

namespace qbx {

/// One for the program: whether a registry failure was already shown. Later failures are only logged.
struct RegistryFailures {
  bool reported = false;
};

/// What every use of the registry needs, by reference.
struct RegistryServices {
  RegistryStore& store;
  Diagnostics diagnostics;
  RegistryFailures& failures;
};

/// Access masks of the platform.
inline constexpr quint32 kKeyQueryValue = 0x0001;
inline constexpr quint32 kKeyAllAccess = 0xF003F;

/// Reads and writes one key: set root and key, then call an operation. The key is opened when first needed. Its values
/// and sub-key names are kept until the next refresh.
///
///   CRegistry registry(services);
///   registry.root = RegistryHive::kLocalMachine;
///   registry.key = productKey + "Login";
///   QString server = registry.GetValue("Server");
///
/// No operation throws. A failure gives an empty or false result and a log line. The first failure of a run is shown in
/// a box, unless bNoErrors is set. Only IsMissing, GetValue by name, SetValue and AutoCreate have callers yet.
class CRegistry {
 public:
  explicit CRegistry(RegistryServices services);

  quint32 AccessType = kKeyAllAccess;  ///< the mask with which the key is opened for reading
  bool AutoCreate = false;             ///< make a missing key instead of failing
  QString key;                         ///< path below the root, without "\" at its start; one at its end is allowed
  bool bNoErrors = false;              ///< show the user no failures
  QString DebugQueryValue;             ///< unless empty: named in the log when the key cannot be opened or made
  RegistryHive root = RegistryHive::kCurrentUser;

  /// The key's unnamed value.
  [[nodiscard]] QString Default();
  bool SetDefault(const QString& data);

  /// At the last refresh.
  [[nodiscard]] int ValueCount() const { return static_cast<int>(values_.size()); }
  /// Always refused and reported, because the count follows from the values.
  void SetValueCount(int count);
  [[nodiscard]] int SubKeyCount() const { return static_cast<int>(subKeys_.size()); }

  /// Whether there is no such key. False when the hive cannot be read.
  [[nodiscard]] bool IsMissing() const;
  bool DeleteValue(const QString& name);
  /// \param position  from 0; outside the list the name is empty. As of the last refresh.
  [[nodiscard]] QString GetName(int position) const;
  [[nodiscard]] QString GetSubKey(int position) const;
  /// The type of a value; kText when there is no such value.
  [[nodiscard]] RegistryType GetType(const QString& name);
  [[nodiscard]] RegistryType GetType(int position) const;
  /// The data of a value, by name (read again, ignoring case) or by position (as of the last refresh); empty when there
  /// is no such value.
  [[nodiscard]] QString GetValue(const QString& name);
  [[nodiscard]] QString GetValue(int position) const;
  /// Removes the key and everything below it.
  bool DeleteKey();
  /// Makes the key and the missing keys above it.
  bool Create();
  /// Reads values and sub-keys again.
  bool Refresh();
  /// Adds or replaces one value.
  bool SetValue(const QString& name, const QString& data, RegistryType type = RegistryType::kText);

 private:
  [[nodiscard]] bool GetKeyInfo();
  /// Makes one key below its parent.
  /// \return what went wrong; empty when it worked. The same holds for the next two.
  [[nodiscard]] QString CreateEx(const QString& path);
  [[nodiscard]] QString OpenKey();
  [[nodiscard]] QString DeleteKeyAdv(const QString& path);
  [[nodiscard]] const RegistryValue* Find(const QString& name) const;
  [[nodiscard]] QString Path() const;
  [[nodiscard]] QString HiveError() const;
  void ReportOpenFailure(const QString& failure);
  void ReportCreateFailure(const QString& path, const QString& failure);
  void LogDebugQueryValue();
  bool SetFailed(int messageNumber, const QString& failure, bool tell);
  bool LoggedDelete(const QString& failure) const;

  RegistryServices services_;
  std::vector<RegistryValue> values_;
  QStringList subKeys_;
};

}  // namespace qbx
