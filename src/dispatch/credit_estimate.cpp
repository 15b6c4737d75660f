#include "dispatch/credit_estimate.h"

#include "dispatch/due_rows.h"
#include "dispatch/message_maker.h"
#include "dispatch/result_rows.h"
#include "dispatch/sms_credits.h"
#include "platform/event_breaks.h"
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
    statements_.ShowFailure(0, QStringLiteral("EstimateSMSCredits"), error);
    return std::nullopt;
  }
}

std::optional<CreditNeed> CreditEstimate::Add(const Wish& wish) {
  const std::optional<DueRows> due = ReadDueRows(statements_, wish.campaignId);
  if (!due) return std::nullopt;
  Recordset rows;
  if (OpenForward(statements_, rows, SelectEstimateRows(wish.campaignId))) return std::nullopt;
  MessageMaker messages({.sms = wish.smsTemplate, .emailSubject = {}, .emailBody = {}});
  CreditNeed need;
  EventBreaks breaks(diagnostics_.ui);
  for (; !rows.Eof(); rows.MoveNext(), breaks.MayPause()) {
    const QString text = messages.Sms(MergeRow(rows, BlankContact::kStaysBlank), wish.day);
    const int cost = SMSCreditsFor(static_cast<int>(text.size()), 1);
    const qint64 recordId = rows.Field(QStringLiteral("RecordID")).ToInt();
    const bool processed = rows.Field(QStringLiteral("Processed")).ToBool();
    const JournalEntry entry = due->Entry(recordId, true, rows.Field(QStringLiteral("Send_Email")).ToBool());
    need.inAll += cost;
    if (processed || entry.sms == JournalState::kSent) need.sent += cost;
    const QString mobile = rows.Field(QStringLiteral("Mobile")).ToText();
    if (!processed && due->WillTry(recordId, entry, Channel::kSms, mobile, wish.repeatDelivered)) need.toGo += cost;
  }
  return need;
}

}  // namespace qbx
