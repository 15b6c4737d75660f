#include "results/first_rows.h"

namespace qbx {

void FirstRows::Read(int campaignId) {
  if (campaignId_ == campaignId) return;
  Forget();
  Recordset rows;
  Connection& connection = statements_.Shared();
  const QString sql =
      QStringLiteral("SELECT TOP %1 * FROM Campaign_Results_Grid WHERE CampaignID = %2 ORDER BY RecordID");
  try {
    if (connection.IsOpen()) rows = Recordset::ReadAll(connection.Driver().Execute(sql.arg(kMost).arg(campaignId)));
    if (rows.IsOpen()) campaignId_ = campaignId;
  } catch (const DatabaseError&) {
    rows.Close();
  }
  rows_ = std::move(rows);
}

}  // namespace qbx
