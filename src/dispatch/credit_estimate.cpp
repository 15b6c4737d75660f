#include "dispatch/credit_estimate.h"

#include <algorithm>

#include "dispatch/mobile_number.h"
#include "dispatch/result_rows.h"
#include "dispatch/send_journal.h"
#include "dispatch/send_refusals.h"
#include "dispatch/sms_credits.h"
#include "merge/compiled_template.h"
#include "results/merge_row.h"

namespace qbx {

std::optional<CreditNeed> CreditEstimate::EstimateSMSCredits(int campaignId, const QString& smsTemplate,
                                                             bool repeatDelivered) {
  const Wish wish{campaignId, smsTemplate, repeatDelivered, diagnostics_.clock.Today()};
  if (kept_ && kept_->wish == wish) return kept_->need;
  kept_.reset();
  try {
    const std::optional<CreditNeed> need = Add(wish);
    if (need) kept_ = Kept{wish, *need};
    return need;
  } catch (const DatabaseError& error) {
    diagnostics_.errors.ShowError(0, QStringLiteral("EstimateSMSCredits"), error.Description());
    return std::nullopt;
  }
}

std::optional<CreditNeed> CreditEstimate::Add(const Wish& wish) {
  const auto fails = [this, &wish](Recordset& answer, const char* procedure) {
    return statements_.dbOpenRec(answer, QStringLiteral("%1 (%2)").arg(QLatin1String(procedure)).arg(wish.campaignId));
  };
  Recordset onRecord;
  Recordset refused;
  if (fails(onRecord, "proc_selp_Send_Journal") || fails(refused, "proc_selp_Send_Refusals")) return std::nullopt;
  const QHash<qint64, JournalEntry> journal = SendJournal::Entries(std::move(onRecord));
  const QHash<qint64, RowRefusals> refusals = SendRefusals::Refusals(std::move(refused));
  Recordset rows;
  if (statements_.dbOpenRec(rows, SelectEstimateRows(wish.campaignId), CursorType::kForwardOnly, LockType::kReadOnly,
                            kOptionUnspecified, CursorLocation::kServer)) {
    return std::nullopt;
  }
  CompiledTemplate compiled(wish.smsTemplate);
  QString text;
  CreditNeed need;
  for (; !rows.Eof(); rows.MoveNext()) {
    compiled.Merge(MergeRow(rows, BlankContact::kStaysBlank), wish.day, text);
    const int cost = SMSCreditsFor(std::min(static_cast<int>(text.size()), kMaxSmsLength), 1);
    const qint64 recordId = rows.Field(QStringLiteral("RecordID")).ToInt();
    const bool processed = rows.Field(QStringLiteral("Processed")).ToBool();
    const JournalEntry entry = journal.value(recordId).Wanted(true, rows.Field(QStringLiteral("Send_Email")).ToBool());
    need.inAll += cost;
    if (processed || entry.sms == JournalState::kSent) need.sent += cost;
    const bool isDue = !processed && !entry.InDoubt() && entry.IsDue(Channel::kSms, wish.repeatDelivered) &&
                       CanBeTexted(rows.Field(QStringLiteral("Mobile")).ToText());
    if (isDue && refusals.value(recordId).sms == Refusal::kNone) need.toGo += cost;
  }
  return need;
}

}  // namespace qbx
