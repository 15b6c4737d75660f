// Positions of windows and columns of their lists, kept for each user.

#pragma once

#include <QString>

#include "settings/registry_values.h"

class QHeaderView;
class QWidget;

namespace qbx {

/// Stores and restores layouts in the registry. No method throws. When a layout cannot be read the widget stays as
/// designed.
class WindowLayout {
 public:
  explicit WindowLayout(RegistryValues& registry) : registry_(registry) {}

  /// Moves a window to where this user left it, on a screen that exists. To be called before the window is shown.
  /// \param form  the window's name, such as "frmMain"
  void RestoreWindow(QWidget& window, const QString& form);
  /// Stores where the window is, unless it is minimised or maximised.
  void SaveWindow(const QWidget& window, const QString& form);

  /// Restores the order and widths of a list's columns.
  void RestoreColumns(QHeaderView& header, const QString& list);
  void SaveColumns(const QHeaderView& header, const QString& list);

 private:
  RegistryValues& registry_;
};

}  // namespace qbx
