#include "campaigns/campaign_list.h"

#include <algorithm>

#include "util/text.h"

namespace qbx {
namespace {

constexpr int kCopyNameLength = 40;

}  // namespace

std::optional<std::vector<CampaignListRow>> LoadCampaigns(Statements& statements) {
  Recordset rows;
  if (statements.dbOpenRec(rows, QStringLiteral("proc_sel_Marketing_Campaigns"))) return std::nullopt;
  std::vector<CampaignListRow> list;
  for (; !rows.Eof(); rows.MoveNext()) {
    list.push_back({.ID = static_cast<int>(rows.Field(QStringLiteral("ID")).ToInt()),
                    .Campaign_Name = rows.Field(QStringLiteral("Campaign_Name")).ToText(),
                    .Last_Run = rows.Field(QStringLiteral("Last_Run")).ToDateTime(),
                    .Created_Date = rows.Field(QStringLiteral("Created_Date")).ToDateTime(),
                    .Campaign_Description = rows.Field(QStringLiteral("Campaign_Description")).ToText(),
                    .Created_By = rows.Field(QStringLiteral("Created_By")).ToText()});
  }
  return list;
}

std::optional<std::vector<CampaignHistoryRow>> LoadCampaignHistory(Statements& statements, bool viewAll) {
  Recordset rows;
  const QString count = QString::number(viewAll ? 0 : kInitialHistoryEvents);
  if (statements.dbOpenRec(rows, QStringLiteral("proc_sel_Marketing_Campaigns_History ") + count)) return std::nullopt;
  std::vector<CampaignHistoryRow> list;
  for (; !rows.Eof(); rows.MoveNext()) {
    list.push_back({.ID = static_cast<int>(rows.Field(QStringLiteral("ID")).ToInt()),
                    .Record_Date = rows.Field(QStringLiteral("Record_Date")).ToDateTime(),
                    .Campaign_Name = rows.Field(QStringLiteral("Campaign_Name")).ToText(),
                    .Event = rows.Field(QStringLiteral("Event")).ToText(),
                    .UserID = rows.Field(QStringLiteral("UserID")).ToText()});
  }
  return list;
}

std::vector<int> CampaignsNamed(const std::vector<CampaignListRow>& list, const QString& name) {
  std::vector<int> named;
  for (const CampaignListRow& row : list) {
    if (EqualsNoCase(TrimBlanks(row.Campaign_Name), TrimBlanks(name))) named.push_back(row.ID);
  }
  return named;
}

std::vector<int> NameTakenBy(const std::vector<CampaignListRow>& list, const QString& name, int own) {
  std::vector<int> named = CampaignsNamed(list, name);
  if (std::find(named.begin(), named.end(), own) != named.end()) named.clear();
  return named;
}

bool CampaignNameIsValid(const QString& name) {
  return !TrimBlanks(name).isEmpty();
}

QString CampaignCopyName(const QString& typed) {
  return CutText(typed, kCopyNameLength);
}

}  // namespace qbx
