// The campaign manager: its lists and the selected campaign.

#include <QString>
#include <QTreeWidget>
#include <QTreeWidgetItem>

#include "campaigns/campaign_list.h"
#include "campaigns/ui/frmCampaigns.h"
#include "campaigns/ui/list_widget.h"
#include "platform/ui/long_text.h"
#include "ui_frmCampaigns.h"

namespace qbx {
namespace {

QTreeWidgetItem* FindRow(const QTreeWidget& list, int id) {
  for (int row = 0; row < list.topLevelItemCount(); ++row) {
    QTreeWidgetItem* item = list.topLevelItem(row);
    if (item->text(0).toInt() == id) return item;
  }
  return nullptr;
}

}  // namespace

bool frmCampaigns::LoadCampaigns() {
  const std::optional<std::vector<CampaignListRow>> rows = qbx::LoadCampaigns(parts_.statements);
  campaigns_ = rows.value_or(std::vector<CampaignListRow>());
  {
    ListFilling filling(*ui_->lstCampaigns);
    for (const CampaignListRow& row : campaigns_) {
      const QTreeWidgetItem* item = filling.Add(
          {row.ID, row.Campaign_Name, row.Last_Run, row.Created_Date, row.Campaign_Description, row.Created_By});
      if (lCampaignId == 0) SelectCampaign(item);
    }
    if (QTreeWidgetItem* current = FindRow(*ui_->lstCampaigns, lCampaignId)) {
      ui_->lstCampaigns->setCurrentItem(current);
      SelectCampaign(current);
    } else if (lCampaignId > 0 && ui_->lstCampaigns->topLevelItemCount() > 0) {
      SelectCampaign(nullptr);
    }
  }
  if (QTreeWidgetItem* current = ui_->lstCampaigns->currentItem()) ui_->lstCampaigns->scrollToItem(current);
  if (!rows)
    ui_->lblCreatedBy->setText(QStringLiteral("The campaigns could not be read. Close this window and open it again."));
  if (!rows && !parts_.statements.Shared().WasOpen()) {
    Tell(QStringLiteral("There is no connection to the database, so the campaigns cannot be shown."));
  }
  return rows.has_value();
}

void frmCampaigns::LoadCampaignHistory(bool viewAll) {
  const std::optional<std::vector<CampaignHistoryRow>> rows = qbx::LoadCampaignHistory(parts_.statements, viewAll);
  historyRead_ = true;
  QTreeWidgetItem* last = nullptr;
  {
    ListFilling filling(*ui_->lstHistory);
    for (const CampaignHistoryRow& row : rows.value_or(std::vector<CampaignHistoryRow>())) {
      last = filling.Add({row.ID, row.Record_Date, row.Campaign_Name, row.Event, row.UserID});
    }
  }
  if (last == nullptr) return;
  ui_->lstHistory->setCurrentItem(last);
  ui_->lstHistory->scrollToItem(last);
}

// After a failure the lists are read again only when the campaign is gone; a failing database was already reported.
void frmCampaigns::RefreshLists(bool withHistory) {
  if (LoadCampaigns() && withHistory) LoadCampaignHistory(viewAll_);
}

void frmCampaigns::SelectCampaign(const QTreeWidgetItem* row) {
  lCampaignId = row == nullptr ? 0 : row->text(0).toInt();
  selectedName_ = row == nullptr ? QString() : WholeText(*row, 1);
  const QString description = row == nullptr ? QString() : WholeText(*row, 4);
  // A refilled list selects the same row again, and laying out a long text takes visible time.
  if (description != selectedDescription_) SetLongText(*ui_->txtDesc, description);
  selectedDescription_ = description;
  ui_->lblCreatedBy->setText(row == nullptr ? QString() : QLatin1String("Created By: ") + row->text(5));
}

}  // namespace qbx
