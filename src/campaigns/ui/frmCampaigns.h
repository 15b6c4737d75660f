// The campaign manager: naming and saving, loading, copying and deleting campaigns, and their history.

#pragma once

#include <QDialog>
#include <memory>

#include "campaigns/campaign_storage.h"
#include "diagnostics/diagnostics.h"
#include "settings/ui/window_layout.h"

namespace Ui {
class frmCampaigns;
}

namespace qbx {

/// What the campaign manager works with. References only.
struct CampaignManagerParts {
  Statements& statements;
  CampaignStorage& storage;
  CurrentCampaign& campaign;
  WindowLayout& layout;
  Diagnostics diagnostics;
};

/// A modal window, opened in one of two modes: saving the current campaign, or loading another.
class frmCampaigns : public QDialog {
 public:
  explicit frmCampaigns(const CampaignManagerParts& parts, QWidget* parent = nullptr);
  ~frmCampaigns() override;

  int lLoadedCampaignID = 0;  ///< the campaign loaded in this opening, 0: none
  int lCampaignId = 0;        ///< the current campaign, then the one selected in the list

  void SetSaving();   ///< opens in save mode
  void SetLoading();  ///< opens in load mode

  /// Shows the window modally; returns when it is closed. Afterwards the caller reads `lLoadedCampaignID`, or the record's ID.
  void ShowForm();

 private:
  CampaignManagerParts parts_;
  std::unique_ptr<Ui::frmCampaigns> ui_;
};

}  // namespace qbx
