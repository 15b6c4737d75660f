#include "dispatch/next_messages.h"

#include "dispatch/due_rows.h"
#include "dispatch/result_rows.h"
#include "dispatch/sms_text.h"
#include "merge/sample_customer.h"
#include "results/merge_row.h"

namespace qbx {

NextMessage SampleMessage(MessageMaker& messages, QDate today) {
  const MergeValues& values = SampleMergeValues();
  return {.sms = SmsAsSent(messages.Sms(values, today)),
          .subject = messages.Subject(values, today),
          .body = messages.Body(values, today)};
}

bool NextMessages::Read(int campaignId, std::optional<Channel> only) {
  places_.clear();
  const std::optional<DueRows> due = ReadDueRows(statements_, campaignId);
  if (!due) return false;
  Recordset rows;
  if (OpenForward(statements_, rows, SelectMailshotRows(campaignId))) return false;
  for (; !rows.Eof(); rows.MoveNext()) {
    const bool wantsSms = rows.Field(QStringLiteral("Send_SMS")).ToBool();
    const bool wantsEmail = rows.Field(QStringLiteral("Send_Email")).ToBool();
    const qint64 id = rows.Field(QStringLiteral("RecordID")).ToInt();
    const QString mobile = rows.Field(QStringLiteral("Mobile")).ToText();
    const JournalEntry entry = due->Entry(id, wantsSms, wantsEmail);
    const Place place{
        .recordId = id,
        .sms = only != Channel::kEmail && wantsSms && due->WillTry(id, entry, Channel::kSms, mobile, false),
        .email = only != Channel::kSms && wantsEmail && due->WillTry(id, entry, Channel::kEmail, mobile, false)};
    if (place.sms || place.email) places_.push_back(place);
  }
  return true;
}

std::optional<NextMessage> NextMessages::At(int place, MessageMaker& messages, QDate today) {
  const Place& wanted = places_.at(static_cast<size_t>(place));
  Recordset rows;
  if (OpenForward(statements_, rows, SelectResultRow(wanted.recordId)) || rows.Eof()) return std::nullopt;
  NextMessage next{.recordId = wanted.recordId,
                   .customer = rows.Field(QStringLiteral("Customer")).ToText(),
                   .mobile = rows.Field(QStringLiteral("Mobile")).ToText(),
                   .email = rows.Field(QStringLiteral("Email")).ToText()};
  const MergeValues values = MergeRow(rows, BlankContact::kBecomesCustomer);
  if (wanted.sms) next.sms = SmsAsSent(messages.Sms(values, today));
  if (!wanted.email) return next;
  next.subject = messages.Subject(values, today);
  next.body = messages.Body(values, today);
  return next;
}

}  // namespace qbx
