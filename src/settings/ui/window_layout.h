// Where windows and the columns of their lists stand, kept for each user.

#pragma once

#include <QString>

#include "settings/registry_values.h"

class QHeaderView;
class QWidget;

namespace qbx {

/// Moves the values between widgets and the registry. No method throws; what cannot be read leaves the widget as it was designed.
class WindowLayout {
 public:
  explicit WindowLayout(RegistryValues& registry) : registry_(registry) {}

  /// Places a window where this user left it, moved onto a screen that exists. To be called before it is shown.
  /// \param form  the window's name, such as "frmMain"
  void RestoreWindow(QWidget& window, const QString& form);
  /// Remembers where it stands; a minimised or maximised window is not remembered.
  void SaveWindow(const QWidget& window, const QString& form);

  /// Order and widths of the columns of a list.
  void RestoreColumns(QHeaderView& header, const QString& list);
  void SaveColumns(const QHeaderView& header, const QString& list);

 private:
  RegistryValues& registry_;
};

}  // namespace qbx
