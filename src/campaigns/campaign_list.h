// What the campaign manager's lists show, and the rules for names.

#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "database/statements.h"

namespace qbx {

/// A row of the list of campaigns. A missing date is invalid.
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

/// The number of most recent events that the history shows at first.
inline constexpr int kInitialHistoryEvents = 50;

/// The stored campaigns, in the host's order.
/// \return nothing when the database failed (already reported, unless it was never connected)
[[nodiscard]] std::optional<std::vector<CampaignListRow>> LoadCampaigns(Statements& statements);

/// The campaigns with a name, ignoring case and blanks around it.
[[nodiscard]] std::vector<int> CampaignsNamed(const std::vector<CampaignListRow>& list, const QString& name);

/// The other campaigns that already have a name which one campaign is to get. Empty when that campaign has the name
/// already, because then nothing changes.
/// \param own  the campaign that gets the name; below 1 for a new one
[[nodiscard]] std::vector<int> NameTakenBy(const std::vector<CampaignListRow>& list, const QString& name, int own);

/// The history, in the host's order.
/// \param viewAll  every event instead of the most recent `kInitialHistoryEvents`
/// \return nothing when the database failed (already reported, unless it was never connected)
[[nodiscard]] std::optional<std::vector<CampaignHistoryRow>> LoadCampaignHistory(Statements& statements, bool viewAll);

/// Whether a campaign may be saved under a name: it must hold more than blanks.
[[nodiscard]] bool CampaignNameIsValid(const QString& name);

/// The name for a copy: the first 40 characters of what was typed (a surrogate pair is not split). Empty when no copy
/// is to be made.
[[nodiscard]] QString CampaignCopyName(const QString& typed);

}  // namespace qbx
