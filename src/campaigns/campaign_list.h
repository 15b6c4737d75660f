// What the campaign manager's lists show, and the rules for names.

#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "database/statements.h"

namespace qbx {

/// A row of the list of campaigns; a date is invalid when there is none.
struct CampaignListRow {
  int ID = 0;
  QString Campaign_Name;
  QDateTime Last_Run;
  QDateTime Created_Date;
  QString Campaign_Description;
  QString Created_By;
};

/// A row of the history of runs and edits.
struct CampaignHistoryRow {
  int ID = 0;
  QDateTime Record_Date;
  QString Campaign_Name;
  QString Event;
  QString UserID;
};

/// Most recent events that the history shows at first.
inline constexpr int kInitialHistoryEvents = 50;

/// The stored campaigns, in the host's order.
/// \return nothing when the database failed (already reported, unless it was never connected)
[[nodiscard]] std::optional<std::vector<CampaignListRow>> LoadCampaigns(Statements& statements);

/// The campaigns that have a name; its case and blanks around it do not matter.
[[nodiscard]] std::vector<int> CampaignsNamed(const std::vector<CampaignListRow>& list, const QString& name);

/// The other campaigns that have a name which a campaign is to be given. None when it has that name already: then nothing changes.
/// \param own  the campaign that gets the name; below 1: a new one
[[nodiscard]] std::vector<int> NameTakenBy(const std::vector<CampaignListRow>& list, const QString& name, int own);

/// The history, in the host's order.
/// \param viewAll  every event instead of the most recent `kInitialHistoryEvents`
/// \return nothing when the database failed (already reported, unless it was never connected)
[[nodiscard]] std::optional<std::vector<CampaignHistoryRow>> LoadCampaignHistory(Statements& statements, bool viewAll);

/// Whether a campaign may be saved under a name: it has more than blanks.
[[nodiscard]] bool CampaignNameIsValid(const QString& name);

/// The name under which a copy is stored: the first 40 characters of what was typed (a surrogate pair is not cut in
/// two). Empty: no copy is made.
[[nodiscard]] QString CampaignCopyName(const QString& typed);

}  // namespace qbx
