// The Help menu and its commands.

#pragma once

class QAction;
class QMainWindow;

namespace qbx {

class Application;
class WindowLayout;

/// Adds the menu to a window: what F1 does, the log file, a back-up of the embedded database (where there is one), the about box. All must live as long
/// as the window.
void AddHelpMenu(QMainWindow& window, QAction& pageHelp, Application& app, WindowLayout& layout);

}  // namespace qbx
