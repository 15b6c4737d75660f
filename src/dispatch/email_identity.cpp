#include "dispatch/email_identity.h"

#include "dispatch/message_maker.h"
#include "util/text.h"

namespace qbx {

namespace {

constexpr int kLongestAddressPart = 99;

MailAddress ParseSender(const QString& text) {
  const qsizetype bracket = text.indexOf(QLatin1Char('<'));
  MailAddress sender{TrimBlanks(text.left(bracket)), text.mid(bracket, kLongestAddressPart)};
  sender.address.remove(QLatin1Char('<')).remove(QLatin1Char('>'));
  sender.address = TrimBlanks(sender.address);
  return sender;
}

MailAddress ChooseSender(const Options& options) {
  MailAddress sender = options.SMTP_FromEmail.contains(QLatin1Char('<'))
                           ? ParseSender(options.SMTP_FromEmail)
                           : MailAddress{options.Reminder_From_Name, TrimBlanks(options.Reminder_From_Email)};
  sender.name.remove(QLatin1Char('"'));
  sender.name = OneLine(sender.name);
  return sender;
}

}  // namespace

EmailIdentity MakeEmailIdentity(const Options& options) {
  EmailIdentity identity{
      .from = ChooseSender(options), .replyTo = TrimBlanks(options.Reminder_From_Email), .copyTo = {}};
  if (identity.replyTo.isEmpty()) identity.replyTo = identity.from.address;
  if (options.Email_Send_BCC) identity.copyTo = TrimBlanks(options.Email_Send_BCC_Address);
  return identity;
}

QString IdentityText(const EmailIdentity& identity) {
  const QString name = TrimBlanks(identity.from.name);
  QString text =
      QStringLiteral("From ") + (name.isEmpty() ? QString() : name + u' ') + u'<' + identity.from.address + u'>';
  if (!EqualsNoCase(identity.replyTo, identity.from.address))
    text += QStringLiteral(", replies to <") + identity.replyTo + u'>';
  if (!identity.copyTo.isEmpty()) text += QStringLiteral(", a copy of each to <") + identity.copyTo + u'>';
  return text + u'.';
}

}  // namespace qbx
