// Settings kept in the registry: general values, window positions, list columns.

#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "settings/registry_key.h"
#include "settings/startup_values.h"

namespace qbx {

/// How a general value is read.
struct RegistryRead {
  bool perUser = false;       ///< the user's name stands between the base key and the section
  bool emptyAsFalse = false;  ///< an empty result becomes "False"
  QString baseKey = {};       ///< instead of ProductKey; with a "\" at the end
  bool machineHive = false;   ///< HKEY_LOCAL_MACHINE instead of HKEY_CURRENT_USER
  QString defaultValue = {};  ///< for a value that is missing, empty, or cannot be read
};

/// Window position and size in twips (15 to a logical pixel).
struct WindowPosition {
  int top = 0;
  int left = 0;
  int width = 0;
  int height = 0;

  friend bool operator==(const WindowPosition&, const WindowPosition&) = default;
};

/// "top, left, width, height".
[[nodiscard]] QString FormatWindowPosition(const WindowPosition& position);
/// A negative top becomes 0, a height below 1200 becomes 1200.
/// \return nothing when the text does not split into four numbers
[[nodiscard]] std::optional<WindowPosition> ParseWindowPosition(const QString& text);

/// One column of a list view.
struct ListViewColumn {
  int position = 0;  ///< place in the shown order, 0 the first
  int width = 0;     ///< logical pixels

  friend bool operator==(const ListViewColumn&, const ListViewColumn&) = default;
};

/// The registry routines, under `ProductKey` of the start-up values. A failure to read gives the default; no call
/// throws.
class RegistryValues {
 public:
  /// All references must outlive this.
  RegistryValues(RegistryServices services, const StartupValues& startup);

  /// Writes a text to HKEY_CURRENT_USER, making the key when it is missing.
  /// \param section  key below the base key; may be empty
  /// \param perUser  puts the user's name between the base key and the section
  /// \return false when it failed (already reported)
  bool sysSaveValueToRegistry(const QString& section, const QString& valueName, const QString& value, bool perUser,
                              const QString& baseKey = {});
  [[nodiscard]] QString sysLoadValueFromRegistry(const QString& section, const QString& valueName,
                                                 const RegistryRead& how = {});
  /// A value of HKEY_LOCAL_MACHINE.
  [[nodiscard]] QString sysLoadValueFromLocalMachine(const QString& section, const QString& valueName,
                                                     const QString& defaultValue = {}, const QString& baseKey = {});
  /// Writes a text to HKEY_LOCAL_MACHINE.
  bool SaveValueToLocalMachine(const QString& section, const QString& valueName, const QString& value);

  /// Stores where the user left a window; a minimised or maximised one is not stored.
  void SaveWindowPosition(const QString& form, const WindowPosition& position, bool minimisedOrMaximised);
  [[nodiscard]] std::optional<WindowPosition> LoadWindowPosition(const QString& form);

  /// Stores the columns of a list, one value each.
  void sysSaveListViewPos(const QString& list, const std::vector<ListViewColumn>& columns);
  /// \param columnCount  columns the list has
  /// \return that many columns, or nothing when the stored layout is missing, damaged or of another number of columns
  [[nodiscard]] std::optional<std::vector<ListViewColumn>> sysLoadListViewPos(const QString& list, int columnCount);

 private:
  [[nodiscard]] QString KeyPath(const QString& section, bool perUser, const QString& baseKey) const;
  bool Write(RegistryHive hive, const QString& path, const QString& valueName, const QString& value);

  RegistryServices services_;
  const StartupValues& startup_;
};

}  // namespace qbx
