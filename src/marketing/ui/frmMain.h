// The main window: start panel, menus, and the five steps.

#pragma once

#include <QAction>
#include <QCloseEvent>
#include <QMainWindow>
#include <QMenu>
#include <QString>
#include <array>
#include <functional>
#include <memory>

#include "desk/campaign_desk.h"
#include "platform/ui/widget_ui.h"
#include "printing/ui/window_outlet.h"
#include "settings/ui/window_layout.h"
#include "wizard/step_checks.h"

namespace Ui {
class frmMain;
}

namespace qbx {

class HelpWindow;
class WizardPage;
struct CampaignManagerParts;

/// Owns the pages and the commands that span them. Each page handles what it shows.
class frmMain : public QMainWindow {
 public:
  frmMain(Application& app, CampaignDesk& desk, WidgetUi& ui, WindowLayout& layout);
  ~frmMain() override;

  /// Asks about texts that were being written when the program was killed. To be called after the window is shown.
  void OfferDraft();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void BuildTabs();
  void BuildMenu();
  QAction* AddEntry(QMenu& menu, const char* name, const QString& text, const std::function<void()>& command);
  void ConnectButtons();
  void ShowConnection();

  // Commands.
  void StartNewCampaign();
  void LoadCampaign();
  void SaveCampaign();
  void RunCampaign();
  void Next(int index);
  void Back(int index);
  void Exit();

  /// Runs a command while all others are disabled.
  void Guarded(const std::function<void()>& command);
  /// Runs a command that needs the database; refuses it with a message when there never was a connection.
  void WithDatabase(const std::function<void()>& command);

  void Go(const StepResult& result);
  /// Opens a tab by its number. When it is open already, it is shown again.
  void SelectTab(int tab);
  void TabOpened(int index);
  /// Opens step 3 and makes a row current.
  void ShowRow(qint64 recordId);
  WizardPage& Page(int index);
  /// Shows the wizard instead of the start panel.
  void ShowWizard();
  /// Shows the campaign that was just set up.
  void ShowCampaign();
  void ShowPages();
  void ShowCaption();
  [[nodiscard]] CampaignManagerParts ManagerParts();

  Application& app_;
  CampaignDesk& desk_;
  WidgetUi& boxes_;
  WindowLayout& layout_;
  WindowOutlet outlet_;
  ReportPrinter reports_;
  std::unique_ptr<Ui::frmMain> ui_;
  std::array<WizardPage*, kTabCount> pages_ = {};  // by tab number less one; null until first opened
  QAction* mnuSave_ = nullptr;
  HelpWindow* help_ = nullptr;
};

}  // namespace qbx
