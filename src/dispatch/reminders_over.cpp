#include "dispatch/reminders_over.h"

#include "util/date_text.h"

namespace qbx {

QString RemindersOverText(Statements& statements, int campaignId, const QDate& today) {
  Recordset rows;
  const QString sql =
      QStringLiteral(
          "SELECT TOP 1 Recall_Date FROM [Campaign Results] (NOLOCK) WHERE CampaignID = %1 AND Processed = 0 AND (Send_SMS = 1 OR Send_Email = 1) AND Recall_Date IS NOT NULL ORDER BY Recall_Date DESC")
          .arg(campaignId);
  if (statements.dbOpenRec(rows, sql) || rows.Eof()) return {};
  const QDate last = rows.Field(0).ToDateTime().date();
  if (!last.isValid() || last >= today) return {};
  return QStringLiteral("The reminders to be sent are over: the last was due on %1.").arg(DayText(last));
}

}  // namespace qbx
