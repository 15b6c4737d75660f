// The main window: start panel, menus, and the five steps.

#pragma once

#include <QMainWindow>

#include "platform/ui/widget_ui.h"
#include "settings/ui/window_layout.h"
#include "wizard/campaign_desk.h"

namespace qbx {

/// Owns the pages and the commands that span them; what a page shows and does is the page's own.
class frmMain : public QMainWindow {
 public:
  frmMain(Application& app, CampaignDesk& desk, WidgetUi& ui, WindowLayout& layout);
  ~frmMain() override;

 private:
  Application& app_;
  CampaignDesk& desk_;
  WidgetUi& ui_;
  WindowLayout& layout_;
};

}  // namespace qbx
