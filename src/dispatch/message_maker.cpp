#include "dispatch/message_maker.h"

#include "dispatch/sms_text.h"

namespace qbx {

MessageMaker::MessageMaker(const MailshotTemplates& templates)
    : sms_(templates.sms), subject_(templates.emailSubject), body_(templates.emailBody) {}

QString MessageMaker::Sms(const MergeValues& values, QDate today) {
  QString text;
  sms_.Merge(values, today, text);
  return SmsText(text);
}

QString MessageMaker::Subject(const MergeValues& values, QDate today) {
  QString text;
  subject_.Merge(values, today, text);
  return OneLine(text);
}

QString MessageMaker::Body(const MergeValues& values, QDate today) {
  QString text;
  body_.Merge(values, today, text);
  return text;
}

QString OneLine(QString text) {
  text.replace(QLatin1Char('\r'), QLatin1Char(' '));
  text.replace(QLatin1Char('\n'), QLatin1Char(' '));
  return text;
}

}  // namespace qbx
