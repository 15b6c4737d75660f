#include "campaigns/campaign_list.h"

#include <algorithm>

#include "util/text.h"

namespace qbx {
namespace {

constexpr int kCopyNameLength = 40;

}  // namespace

std::optional<std::vector<CampaignListRow>> LoadCampaigns(Statements& statements) {
  Recordset rows;
  if (statements.dbOpenRec(rows, u"proc_sel_Marketing_Campaigns"_qs)) return std::nullopt;
  std::vector<CampaignListRow> list;
  for (; !rows.Eof(); rows.MoveNext()) {
    list.push_back({.ID = static_cast<int>(rows.Field(u"ID"_qs).ToInt()),
                    .Campaign_Name = rows.Field(u"Campaign_Name"_qs).ToText(),
                    .Last_Run = rows.Field(u"Last_Run"_qs).ToDateTime(),
                    .Created_Date = rows.Field(u"Created_Date"_qs).ToDateTime(),
                    .Campaign_Description = rows.Field(u"Campaign_Description"_qs).ToText(),
                    .Created_By = rows.Field(u"Created_By"_qs).ToText()});
  }
  return list;
}

std::optional<std::vector<CampaignHistoryRow>> LoadCampaignHistory(Statements& statements, bool viewAll) {
  Recordset rows;
  const QString count = QString::number(viewAll ? 0 : kInitialHistoryEvents);
  if (statements.dbOpenRec(rows, u"proc_sel_Marketing_Campaigns_History "_qs + count)) return std::nullopt;
  std::vector<CampaignHistoryRow> list;
  for (; !rows.Eof(); rows.MoveNext()) {
    list.push_back({.ID = static_cast<int>(rows.Field(u"ID"_qs).ToInt()),
                    .Record_Date = rows.Field(u"Record_Date"_qs).ToDateTime(),
                    .Campaign_Name = rows.Field(u"Campaign_Name"_qs).ToText(),
                    .Event = rows.Field(u"Event"_qs).ToText(),
                    .UserID = rows.Field(u"UserID"_qs).ToText()});
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
