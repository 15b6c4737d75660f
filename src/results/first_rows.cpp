#include "results/first_rows.h"

namespace qbx {

void FirstRows::Read(int campaignId) {
  if (campaignId_ == campaignId) return;
  Recordset rows;
  const QString sql =
      QStringLiteral("SELECT TOP %1 * FROM Campaign_Results_Grid WHERE CampaignID = %2 ORDER BY RecordID");
  const bool failed = statements_.dbOpenRec(rows, sql.arg(kMost).arg(campaignId));
  rows_ = failed ? Recordset() : std::move(rows);
  campaignId_ = campaignId;
}

}  // namespace qbx
