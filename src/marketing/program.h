// The window program: start-up with its splash, and the main window over one Application.

#pragma once

#include <QString>
#include <memory>

#include "startup/application.h"

namespace qbx {

class CampaignDesk;
class WidgetUi;
class WindowLayout;
class frmAbout;
class frmMain;
class frmSendEmail;

/// What `main` runs and the scenarios drive. There is one at a time, on the thread of the QApplication.
///
///   WidgetUi ui;
///   MarketingProgram program(ui, {.ui = ui, .clock = clock, .folders = FindFolders()});
///   if (program.Start(JoinCommandLine(arguments)) == StartOutcome::kRunning) return QApplication::exec();
class MarketingProgram {
 public:
  /// \param setup  its `ui` must be `ui`
  MarketingProgram(WidgetUi& ui, const ApplicationSetup& setup);
  ~MarketingProgram();
  MarketingProgram(const MarketingProgram&) = delete;
  MarketingProgram& operator=(const MarketingProgram&) = delete;

  /// Runs start-up. The main window is open when this returns kRunning.
  StartOutcome Start(const QString& commandLine);

  [[nodiscard]] Application& App() { return app_; }
  /// The main window; null unless the program is running.
  [[nodiscard]] frmMain* MainWindow() { return window_.get(); }

 private:
  void OpenWindows();

  WidgetUi& ui_;
  Application app_;
  std::unique_ptr<WindowLayout> layout_;
  std::unique_ptr<frmAbout> splash_;
  std::unique_ptr<frmSendEmail> emailWindow_;
  std::unique_ptr<CampaignDesk> desk_;
  std::unique_ptr<frmMain> window_;
};

}  // namespace qbx
