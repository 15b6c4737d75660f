// One registry key under one hive, as the program reads and writes it.

#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "diagnostics/diagnostics.h"
#include "registry/registry_store.h"

namespace qbx {

/// One for the program: whether a registry failure was already reported. From then on failures are only logged.
struct RegistryFailures {
  bool reported = false;
};

/// What every use of the registry needs, as one argument. References only.
struct RegistryServices {
  RegistryStore& store;
  Diagnostics diagnostics;
  RegistryFailures& failures;
};

/// Access masks of the platform.
inline constexpr quint32 kKeyQueryValue = 0x0001;
inline constexpr quint32 kKeyAllAccess = 0xF003F;

/// Short-lived: set root and key, call one operation. It opens the key on demand and keeps its values and sub-key names
/// from the last refresh.
///
///   CRegistry registry(services);
///   registry.root = RegistryHive::kLocalMachine;
///   registry.key = productKey + "Login";
///   QString server = registry.GetValue("Server");
///
/// No operation throws. Failures give empty or false results, a log line, and, once in a run and unless bNoErrors, a
/// box.
class CRegistry {
 public:
  explicit CRegistry(RegistryServices services);

  quint32 AccessType = kKeyAllAccess;  ///< mask used when the key is opened for reading
  bool AutoCreate = false;             ///< make a missing key instead of failing
  QString key;                         ///< path below the root, no "\" in front; one at the end does no harm
  bool bNoErrors = false;              ///< report nothing to the user
  QString DebugQueryValue;             ///< not empty: named in the log when the key cannot be opened or made
  RegistryHive root = RegistryHive::kCurrentUser;

  /// The key's unnamed value.
  [[nodiscard]] QString Default();
  bool SetDefault(const QString& data);

  /// As of the last refresh.
  [[nodiscard]] int ValueCount() const { return static_cast<int>(values_.size()); }
  /// Always refused and reported: the count follows from the values.
  void SetValueCount(int count);
  [[nodiscard]] int SubKeyCount() const { return static_cast<int>(subKeys_.size()); }

  /// Whether there is no such key. A hive that cannot be read may have it.
  [[nodiscard]] bool IsMissing() const;
  bool DeleteValue(const QString& name);
  /// \param position  0 the first; outside the list gives empty. As of the last refresh.
  [[nodiscard]] QString GetName(int position) const;
  [[nodiscard]] QString GetSubKey(int position) const;
  /// Type of a value; kText when there is none.
  [[nodiscard]] RegistryType GetType(const QString& name);
  [[nodiscard]] RegistryType GetType(int position) const;
  /// Data of a value, by name (read anew, without regard to case) or by position (as of the last refresh); empty when
  /// there is none.
  [[nodiscard]] QString GetValue(const QString& name);
  [[nodiscard]] QString GetValue(int position) const;
  /// Removes the key and all that lies below it.
  bool DeleteKey();
  /// Makes the key and the missing keys above it.
  bool Create();
  /// Reads values and sub-keys again.
  bool Refresh();
  /// Writes or replaces one value.
  bool SetValue(const QString& name, const QString& data, RegistryType type = RegistryType::kText);

 private:
  [[nodiscard]] bool GetKeyInfo();
  /// Makes one key below its parent.
  /// \return like the next two, what went wrong, empty when it worked
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
