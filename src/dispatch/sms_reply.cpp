#include "dispatch/sms_reply.h"

#include <QStringList>
#include <algorithm>
#include <limits>

#include "util/text.h"

namespace qbx {

namespace {

/// The fields of a reply; the last one is not wrapped.
QStringList Fields(const QString& body) {
  QStringList fields = body.split(QLatin1Char('|'));
  for (qsizetype i = 0; i + 1 < fields.size(); ++i) {
    fields[i] = fields[i].size() > 2 ? fields[i].mid(1, fields[i].size() - 2) : QString();
  }
  return fields;
}

int Integer(const QString& field) {
  using Limits = std::numeric_limits<int>;
  return static_cast<int>(std::clamp<qint64>(LeadingInteger(field), Limits::min(), Limits::max()));
}

struct Reason {
  int code;
  const char* text;
};

constexpr Reason kSendReasons[] = {
    {2, "SMS Gateway reported Authentication failed."},
    {3, "SMS Gateway reported SMS failed."},
    {22, "SMS Gateway reported Authentication refused."},
    {31, "SMS Gateway reported Insufficient Credits."},
    {33, "SMS Gateway reported Invalid Number Format."},
    {kCodeAccountRefused, "Message not sent because the SMS Client Username or Password is not valid."},
    {kCodeNoCredits, "Message not sent because your SMS Text account has insufficient credits."},
};

constexpr Reason kTestReasons[] = {
    {2, "SMS Provider reported Authentication failed."},
    {3, "SMS Provider reported SMS failed."},
    {22, "SMS Provider reported Authentication refused."},
    {33, "SMS Provider reported Insufficient Credits."},
    {kCodeAccountRefused, "Message not sent because the SMS Account Username or Password is not valid."},
    {kCodeNoCredits, "Message not sent because your SMS Text account has insufficient credits."},
};

template <std::size_t n>
QString Lookup(const Reason (&reasons)[n], int code, const char* otherwise) {
  for (const Reason& reason : reasons) {
    if (reason.code == code) return QString::fromLatin1(reason.text);
  }
  return QString::fromLatin1(otherwise) + QString::number(code);
}

}  // namespace

bool IsWebPage(const QString& body, bool isHtml, int fields) {
  const QStringList present = Fields(body);
  if (present.size() >= fields && !present[0].isEmpty() && present[0][0].isDigit()) return false;
  return isHtml || body.trimmed().startsWith(QLatin1Char('<'));
}

std::optional<SmsReply> ParseSmsReply(const QString& body) {
  const QStringList fields = Fields(body);
  if (fields.size() < kSendFields) return std::nullopt;
  SmsReply reply;
  const double status = LeadingNumber(fields[0]);
  reply.balance = LeadingNumber(fields[1]);
  reply.messageId = Integer(fields[2]);
  reply.code = Integer(fields[3]);
  if (status == 0) reply.code = kCodeAccountRefused;
  if (status == 2) reply.code = kCodeNoCredits;
  return reply;
}

std::optional<CreditReply> ParseCreditReply(const QString& body) {
  const QStringList fields = Fields(body);
  if (fields.size() < kCreditFields) return std::nullopt;
  const bool accepted = LeadingNumber(fields[0]) > 0;
  return CreditReply{accepted, accepted ? LeadingNumber(fields[1]) : 0.0};
}

QString SendRefusalReason(int code, const QString& mobile) {
  QString reason = Lookup(kSendReasons, code, "SMS Gateway reported error code ");
  if (code == 33) reason += QStringLiteral("\r\rNumber may be invalid: ") + mobile;
  return reason;
}

QString TestRefusalReason(int code) {
  return Lookup(kTestReasons, code, "SMS Provider reported error code ");
}

}  // namespace qbx
