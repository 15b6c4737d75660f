#include "dispatch/tick_reasons.h"

#include "dispatch/recipients.h"
#include "results/flag_columns.h"
#include "results/letter_address.h"
#include "results/mobile_number.h"
#include "util/text.h"

namespace qbx {

namespace {

QString Refused(Refusal refused, const char* messages) {
  switch (refused) {
    case Refusal::kCustomerGone:
      return QStringLiteral("customer deleted");
    case Refusal::kOptedOut:
      return QStringLiteral("opted out");
    case Refusal::kNotOptedIn:
      return QStringLiteral("not opted in");
    case Refusal::kNoMarketing:
      return QStringLiteral("\"No Marketing\"");
    case Refusal::kChannel:
      return QStringLiteral("no longer agrees to ") + QLatin1String(messages);
    case Refusal::kNone:
      break;
  }
  return {};
}

}  // namespace

QString WhyNoText(const QString& mobile, Refusal refused) {
  if (mobile.trimmed().isEmpty()) return QStringLiteral("no mobile");
  if (!CanBeTexted(mobile)) return QStringLiteral("mobile is too short");
  return Refused(refused, "texts");
}

QString WhyNoEmail(const QString& email, Refusal refused) {
  const Recipients to = RecipientsOf(email);
  if (to.addresses.isEmpty() && email.trimmed().isEmpty()) return QStringLiteral("no e-mail address");
  if (!to.problem.isEmpty()) return QStringLiteral("e-mail address cannot be used");
  return Refused(refused, "e-mails");
}

QString WhyNoLetter(const QString& address, Refusal refused) {
  switch (FaultOfAddress(address)) {
    case AddressFault::kEmpty:
      return QStringLiteral("no address");
    case AddressFault::kNoPostcode:
      return QStringLiteral("no postcode");
    case AddressFault::kNone:
      break;
  }
  return Refused(refused, "letters");
}

QString WhyNoFlag(const Recordset& rows, qint64 row, const QString& flag) {
  const auto text = [&](const QString& column) { return rows.At(row, rows.ColumnIndex(column)).ToValue().ToText(); };
  if (EqualsNoCase(flag, kSendSmsFlag)) return WhyNoText(text(QStringLiteral("Mobile")));
  if (EqualsNoCase(flag, kSendEmailFlag)) return WhyNoEmail(text(QStringLiteral("Email")));
  if (EqualsNoCase(flag, kSendLetterFlag)) return WhyNoLetter(text(QStringLiteral("Address")));
  return {};
}

}  // namespace qbx
