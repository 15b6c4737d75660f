#include "marketingctl/option_values.h"

#include <QRegularExpression>
#include <limits>

#include "settings/sms_sender.h"
#include "util/text.h"

namespace qbx::ctl {

namespace {

constexpr int kLastPort = 65535;

bool IsPort(const QString& text) {
  bool isNumber = false;
  const int port = text.toInt(&isNumber);
  return isNumber && port >= 1 && port <= kLastPort;
}

bool IsAddress(const QString& text) {
  static const QRegularExpression address(QStringLiteral("^[^@]*[^@\\s]@[^@\\s]+[^@]*$"));
  return address.match(text).hasMatch();
}

bool IsHost(const QString& text) {
  static const QRegularExpression blank(QStringLiteral("\\s"));
  return !text.contains(blank);
}

bool IsDuration(const QString& text) {
  return text.toInt() >= 0;
}

struct ValueRule {
  const char* key;
  bool (*fits)(const QString& text);
  const char* what;
};

// Rules for texts and numbers beyond their type. An empty text always passes: the option is then not set.
constexpr ValueRule kValueRules[] = {
    {"SMTP_Port", IsPort, "a port from 1 to 65535"},
    {"SMTP_Server", IsHost, "the name of a server, without blanks"},
    {"SMS_Server", IsHost, "the address of a server, without blanks"},
    {"Reminder_From_Email", IsAddress, "an e-mail address"},
    {"SMTP_FromEmail", IsAddress, "an e-mail address"},
    {"SMTP_ReplyTo", IsAddress, "an e-mail address"},
    {"Email_Send_BCC_Address", IsAddress, "an e-mail address"},
    {"Reminder_From_SMS", IsSmsSender, kSmsSenderRule},
    {"SMS_Sender_ID", IsSmsSender, kSmsSenderRule},
    {"Timeout", IsDuration, "a number of seconds"},
};

std::optional<Value> FlagValue(const QString& text) {
  static const QStringList kTrue = {QStringLiteral("true"), QStringLiteral("on"), QStringLiteral("yes"),
                                    QStringLiteral("1")};
  static const QStringList kFalse = {QStringLiteral("false"), QStringLiteral("off"), QStringLiteral("no"),
                                     QStringLiteral("0")};
  if (kTrue.contains(text.toLower())) return Value(true);
  if (kFalse.contains(text.toLower())) return Value(false);
  return std::nullopt;
}

std::optional<Value> NumberValue(const QString& text, OptionType type) {
  bool isNumber = false;
  const int number = text.toInt(&isNumber);
  using Short = std::numeric_limits<qint16>;
  const bool fits = type == OptionType::kInteger32 || (number >= Short::min() && number <= Short::max());
  return isNumber && fits ? std::optional(Value(number)) : std::nullopt;
}

}  // namespace

std::optional<Value> OptionValue(const OptionKey& key, const QString& text, QString& problem) {
  for (const ValueRule& rule : kValueRules) {
    if (!EqualsNoCase(QLatin1String(rule.key), QLatin1String(key.name)) || text.isEmpty() || rule.fits(text)) continue;
    problem = QLatin1String(rule.what);
    return std::nullopt;
  }
  if (key.type == OptionType::kText) return Value(text);
  const bool isFlag = key.type == OptionType::kBoolean;
  problem = isFlag ? QStringLiteral("on or off") : QStringLiteral("a number");
  return isFlag ? FlagValue(text) : NumberValue(text, key.type);
}

}  // namespace qbx::ctl
