#include "campaigns/store_campaign.h"

#include "database/procedure.h"

namespace qbx {

namespace {

/// Whether the history says that somebody else deleted a campaign. False also when that cannot be found out.
bool DeletedByAnother(Statements& statements, int campaignId, const QString& user) {
  try {
    Recordset deletion =
        Procedure(statements.Shared(), "proc_selp_Marketing_Campaign_Deleted").Open({{"@CampaignID", campaignId}});
    deletion.MoveFirst();
    return !deletion.Eof() && deletion.Field(QStringLiteral("UserID")).ToText().compare(user, Qt::CaseInsensitive) != 0;
  } catch (const DatabaseError&) {
    return false;
  }
}

bool Store(Statements& statements, CampaignStorage& storage, const CurrentCampaign& campaign, UserInterface& ui) {
  if (campaign.record.ID < 1) return storage.SaveCampaign();
  if (storage.UpdateCampaign()) return true;
  if (!CampaignIsGone(statements, campaign.record.ID)) return false;
  const bool byAnother = DeletedByAnother(statements, campaign.record.ID, storage.User());
  const Message question{
      .text = byAnother ? QStringLiteral("The Campaign has been deleted by another user.\r\rSave it as a new Campaign?")
                        : QStringLiteral("The Campaign has been deleted.\r\rSave it as a new Campaign?"),
      .icon = MessageIcon::kQuestion,
      .buttons = MessageButtons::kYesNo};
  return ui.ShowMessage(question) == MessageAnswer::kYes && storage.SaveCampaign();
}

}  // namespace

bool StoreCampaign(Statements& statements, CampaignStorage& storage, CurrentCampaign& campaign, UserInterface& ui,
                   const QString& name, const QString& description) {
  campaign.record.Campaign_Name = name;
  campaign.record.Campaign_Description = description;
  const bool stored = Store(statements, storage, campaign, ui);
  if (!stored) campaign.CampaignChanged = true;
  return stored;
}

bool CampaignIsGone(Statements& statements, int campaignId) {
  try {
    Command command;
    command.connection = &statements.Shared();
    command.commandText = QStringLiteral("proc_selp_Marketing_Campaign");
    command.parameters = command.connection->Driver().DescribeProcedure(command.commandText);
    command.SetParameter(QStringLiteral("@CampaignID"), campaignId);
    return Recordset::ReadAll(command.Open()).Eof();
  } catch (const DatabaseError&) {
    return false;
  }
}

}  // namespace qbx
