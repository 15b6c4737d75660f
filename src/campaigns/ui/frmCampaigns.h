// The campaign manager: saving, loading, copying and deleting campaigns, and their history.

#pragma once

#include <QDialog>
#include <QEvent>
#include <QKeyEvent>
#include <QObject>
#include <QString>
#include <QWidget>
#include <memory>

#include "campaigns/campaign_list.h"
#include "campaigns/campaign_storage.h"
#include "diagnostics/diagnostics.h"
#include "settings/ui/window_layout.h"

class QTreeWidgetItem;

namespace Ui {
class frmCampaigns;
}

namespace qbx {

/// What the campaign manager works with. The references must outlive it.
struct CampaignManagerParts {
  Statements& statements;
  CampaignStorage& storage;
  CurrentCampaign& campaign;
  WindowLayout& layout;
  Diagnostics diagnostics;
};

/// A modal window with two modes: saving the current campaign, or loading another.
///
///   frmCampaigns window(parts, this);
///   window.SetLoading();
///   window.ShowForm();
///   if (window.lLoadedCampaignID > 0) ...
///
/// Database failures are reported before a call returns; the window stays usable.
class frmCampaigns : public QDialog {
 public:
  explicit frmCampaigns(const CampaignManagerParts& parts, QWidget* parent = nullptr);
  ~frmCampaigns() override;

  int lLoadedCampaignID = 0;  ///< the campaign that was loaded since the window opened, 0 for none
  int lCampaignId = 0;        ///< the current campaign, then the one selected in the list
  bool stored = false;        ///< whether the current campaign was stored since the window opened

  void SetSaving();   ///< opens in save mode
  void SetLoading();  ///< opens in load mode

  /// Shows the window modally; returns when it is closed. Afterwards the caller reads `lLoadedCampaignID`, or the
  /// record's ID.
  void ShowForm();

  void setVisible(bool visible) override;
  /// Asks first when an edit would be lost.
  void reject() override;
  void done(int result) override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// Name and description as they were typed for a stored campaign.
  struct Details {
    int campaignId = 0;
    QString name = {};
    QString description = {};
  };

  void Connect();
  void PrepareMode();
  void EnableButtons();
  [[nodiscard]] bool LoadCampaigns();
  void LoadCampaignHistory(bool viewAll);
  void RefreshLists(bool withHistory);
  void SelectCampaign(const QTreeWidgetItem* row);
  void ShowNames(const QString& name, const QString& description);
  [[nodiscard]] QString TypedDescription() const;
  [[nodiscard]] bool MayLoseEdit();
  void Load();
  void LoadByDoubleClick();
  [[nodiscard]] bool LoadSelected();
  void Edit();
  void Save();
  /// Asks when another campaign has a name.
  /// \param own  the campaign that may have it, 0 for none
  [[nodiscard]] bool NameMayBeUsed(const QString& name, int own);
  void SaveEdit();
  void Cancel();
  void Copy();
  void Delete();
  void LeaveEditing();
  void Tell(const QString& text);

  CampaignManagerParts parts_;
  std::unique_ptr<Ui::frmCampaigns> ui_;
  bool saving_ = false;
  bool editing_ = false;
  int editedId_ = 0;  ///< the list stays usable during an edit, its buttons do not
  bool viewAll_ = false;
  bool historyRead_ = false;
  QString selectedName_;
  QString selectedDescription_;
  QString givenName_;         ///< the text that `txtName` was given
  QString givenDescription_;  ///< the text that `txtDescription` was given; the box converts its line breaks
  std::vector<CampaignListRow> campaigns_;  ///< as the list shows them
  Details unsaved_;  ///< an edit that could not be stored, offered again at the next edit of this campaign
};

}  // namespace qbx
