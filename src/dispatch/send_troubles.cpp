#include "dispatch/send_troubles.h"

namespace qbx {

QList<SendTrouble> ReadSendTroubles(Connection& connection, int campaignId) {
  QList<SendTrouble> troubles;
  Recordset rows = Procedure(connection, "proc_selp_Send_Troubles").Open({{"@CampaignID", campaignId}});
  for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) {
    SendTrouble trouble;
    trouble.recordId = rows.Field(QStringLiteral("RecordID")).ToInt();
    trouble.channel = static_cast<Channel>(rows.Field(QStringLiteral("Channel")).ToInt());
    trouble.inDoubt = static_cast<JournalState>(rows.Field(QStringLiteral("State")).ToInt()) == JournalState::kSending;
    trouble.customer = rows.Field(QStringLiteral("Customer")).ToText();
    trouble.contact = rows.Field(QStringLiteral("Contact")).ToText();
    trouble.to =
        rows.Field(trouble.channel == Channel::kSms ? QStringLiteral("Mobile") : QStringLiteral("Email")).ToText();
    trouble.reason = rows.Field(QStringLiteral("Reason")).ToText();
    trouble.changed = rows.Field(QStringLiteral("Changed")).ToDateTime();
    troubles.append(trouble);
  }
  return troubles;
}

}  // namespace qbx
