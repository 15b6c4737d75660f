// Disabling commands while one of them runs.

#pragma once

#include <QList>
#include <QPointer>

class QAction;
class QMainWindow;
class QWidget;

namespace qbx {

/// Disables every button, menu entry and tab of a window that could start a second operation. The destructor enables
/// the same ones again and returns the focus.
class CommandGuard {
 public:
  explicit CommandGuard(QMainWindow& window);
  ~CommandGuard();
  CommandGuard(const CommandGuard&) = delete;
  CommandGuard& operator=(const CommandGuard&) = delete;

 private:
  QList<QPointer<QWidget>> widgets_;
  QList<QPointer<QAction>> actions_;
  QPointer<QWidget> focus_;
};

}  // namespace qbx
