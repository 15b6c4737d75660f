// The Help menu and its commands.

#pragma once

class QAction;
class QMainWindow;

namespace qbx {

class Application;
class WindowLayout;

/// Adds the menu to a window: the action of F1, the log file, a back-up of the embedded database (if there is one), and
/// the about box. All arguments must outlive the window.
void AddHelpMenu(QMainWindow& window, QAction& pageHelp, Application& app, WindowLayout& layout);

}  // namespace qbx
