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
  bool perUser = false;       ///< puts the user's name between the base key and the section
  bool emptyAsFalse = false;  ///< an empty result becomes "False"
  QString baseKey = {};       ///< replaces ProductKey; ends with "\"
  bool machineHive = false;   ///< HKEY_LOCAL_MACHINE instead of HKEY_CURRENT_USER
  QString defaultValue = {};  ///< for a value that is missing, empty or unreadable
};

/// Window position and size in twips (15 to a logical pixel).
struct WindowPosition {
  int top = 0;
  int left = 0;
  int width = 0;
  int height = 0;

  friend bool operator==(const WindowPosition&, const WindowPosition&) = default;
};

/// The text "top, left, width, height".
[[nodiscard]] QString FormatWindowPosition(const WindowPosition& position);
/// A negative top becomes 0, a height below 1200 becomes 1200.
/// \return nothing when the text does not split into four numbers
[[nodiscard]] std::optional<WindowPosition> ParseWindowPosition(const QString& text);

/// One column of a list view.
struct ListViewColumn {
  int position = 0;  ///< place in the shown order, from 0
  int width = 0;     ///< logical pixels

  friend bool operator==(const ListViewColumn&, const ListViewColumn&) = default;
};

/// The registry routines, below `ProductKey` of the start-up values. A value that cannot be read is the default. No
/// call throws.
class RegistryValues {
 public:
  /// All references must outlive this.
  RegistryValues(RegistryServices services, const StartupValues& startup);

  /// Writes a text to HKEY_CURRENT_USER and makes a missing key.
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

  /// Stores the position of a window, unless the window is minimised or maximised.
  void SaveWindowPosition(const QString& form, const WindowPosition& position, bool minimisedOrMaximised);
  [[nodiscard]] std::optional<WindowPosition> LoadWindowPosition(const QString& form);

  /// Stores the columns of a list, one value each.
  void sysSaveListViewPos(const QString& list, const std::vector<ListViewColumn>& columns);
  /// \param columnCount  number of columns of the list
  /// \return that many columns; nothing when the stored layout is missing, damaged or has another number of columns
  [[nodiscard]] std::optional<std::vector<ListViewColumn>> sysLoadListViewPos(const QString& list, int columnCount);

 private:
  [[nodiscard]] QString KeyPath(const QString& section, bool perUser, const QString& baseKey) const;
  bool Write(RegistryHive hive, const QString& path, const QString& valueName, const QString& value);

  RegistryServices services_;
  const StartupValues& startup_;
};

}  // namespace qbx
