#include "dispatch/due_rows.h"

#include "results/mobile_number.h"

namespace qbx {

bool DueRows::WillTry(qint64 recordId, const JournalEntry& entry, Channel channel, const QString& mobile,
                      bool repeatDelivered) const {
  const bool due = !entry.InDoubt() && entry.IsDue(channel, repeatDelivered);
  return due && refused.value(recordId).Of(channel) == Refusal::kNone &&
         (channel == Channel::kEmail || CanBeTexted(mobile));
}

std::optional<DueRows> ReadDueRows(Statements& statements, int campaignId) {
  const auto fails = [&statements, campaignId](Recordset& answer, const char* procedure) {
    return statements.dbOpenRec(answer, QStringLiteral("%1 (%2)").arg(QLatin1String(procedure)).arg(campaignId));
  };
  Recordset entries;
  Recordset refused;
  if (fails(entries, "proc_selp_Send_Journal") || fails(refused, "proc_selp_Send_Refusals")) return std::nullopt;
  return DueRows{SendJournal::Entries(std::move(entries)), SendRefusals::Refusals(std::move(refused))};
}

}  // namespace qbx
