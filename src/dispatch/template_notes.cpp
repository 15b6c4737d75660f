#include "dispatch/template_notes.h"

#include "dispatch/email_identity.h"
#include "dispatch/sms_credits.h"
#include "dispatch/sms_text.h"
#include "settings/sms_sender.h"
#include "util/text.h"

namespace qbx {

namespace {

/// Characters separated by blanks, so that each can be seen.
QString Spaced(const QString& characters) {
  QStringList each;
  for (const char32_t character : characters.toUcs4())
    each.append(QString::fromUcs4(&character, 1));
  return each.join(u' ');
}

void Add(QStringList& notes, const QString& sentence) {
  if (!sentence.isEmpty()) notes.append(sentence);
}

QString EmptyFieldsText(const QStringList& fields) {
  if (fields.isEmpty()) return {};
  const QString what = fields.size() == 1 ? QStringLiteral("%1 stays empty: this query does not give it.")
                                          : QStringLiteral("%1 stay empty: this query does not give them.");
  return what.arg(fields.join(QLatin1String(", ")));
}

void AddFieldNotes(QStringList& notes, const QString& text, KnownData data) {
  Add(notes, UnknownFieldsText(UnknownFields(text)));
  Add(notes, EmptyFieldsText(EmptyFields(text, data)));
}

void AddCharacterNotes(QStringList& notes, const QString& sms) {
  const QString lost = CharactersNotSent(sms);
  if (!lost.isEmpty())
    Add(notes,
        (lost.toUcs4().size() == 1 ? QStringLiteral("%1 arrives as \"?\".") : QStringLiteral("%1 arrive as \"?\"."))
            .arg(Spaced(lost)));
  const QString costly = CharactersOutsideGsm(sms);
  if (!costly.isEmpty())
    Add(notes, QStringLiteral("Because of %1 a phone network may count 70 characters a part instead of 160.")
                   .arg(Spaced(costly)));
}

QString LengthText(const RowSurvey& rows) {
  if (rows.texts == 0) return {};
  const int sent = std::min(rows.longestText, kMaxSmsLength);
  const int credits = SMSCreditsFor(sent, 1);
  QString text = QStringLiteral("The longest text has %1 characters and costs %2.")
                     .arg(rows.longestText)
                     .arg(credits == 1 ? QStringLiteral("1 credit") : QStringLiteral("%1 credits").arg(credits));
  if (rows.textsCut > 0)
    text += QStringLiteral(" %1 texts are cut to %2 characters.").arg(rows.textsCut).arg(kMaxSmsLength);
  return text;
}

QString SenderText(const QString& sender) {
  if (IsSmsSender(sender)) return {};
  return QStringLiteral("Networks may refuse the sender \"%1\", which is not %2.")
      .arg(sender, QLatin1String(kSmsSenderRule));
}

/// The note about a sender name that is set but not used.
QString UnusedNameText(const Options& options, const EmailIdentity& identity) {
  const QString name = TrimBlanks(options.Reminder_From_Name);
  if (name.isEmpty() || name == TrimBlanks(identity.from.name)) return {};
  return QStringLiteral("The name \"%1\" of the settings is not used: that of the mail account goes first.").arg(name);
}

QString StopSentence(const QStringList& ways, const char* what) {
  const QString how = ways.isEmpty() ? QStringLiteral("Tell us") : ways.join(QLatin1String(" or "));
  return how.left(1).toUpper() + how.mid(1) + QLatin1String(what);
}

}  // namespace

QString UnknownFieldsText(const QStringList& fields) {
  if (fields.isEmpty()) return {};
  const QString what = fields.size() == 1 ? QStringLiteral("%1 is no merge field and goes out as it stands.")
                                          : QStringLiteral("%1 are no merge fields and go out as they stand.");
  return what.arg(fields.join(QLatin1String(", ")));
}

QString StopTextsSentence(const Options& options) {
  const QString telephone = TrimBlanks(options.CoTelNo);
  const QString address = TrimBlanks(options.Reminder_From_Email);
  QStringList ways;
  if (options.SMS_Receive && IsSmsNumber(options.Reminder_From_SMS)) ways += QStringLiteral("reply STOP");
  if (!telephone.isEmpty()) ways += QStringLiteral("call ") + telephone;
  if (ways.isEmpty() && !address.isEmpty()) ways += QStringLiteral("write to ") + address;
  return StopSentence(ways, " to stop these messages.");
}

QString StopEmailsSentence(const Options& options) {
  const QString telephone = TrimBlanks(options.CoTelNo);
  QStringList ways = {QStringLiteral("reply STOP")};
  if (!telephone.isEmpty()) ways += QStringLiteral("call ") + telephone;
  return StopSentence(ways, " to stop these e-mails.");
}

QStringList SmsNotes(const QString& sms, const NoteFacts& facts) {
  if (sms.trimmed().isEmpty()) return {};
  QStringList notes;
  AddFieldNotes(notes, sms, facts.data);
  AddCharacterNotes(notes, sms);
  Add(notes, SenderText(facts.options.Reminder_From_SMS));
  if (facts.rows) Add(notes, LengthText(*facts.rows));
  if (facts.rows) Add(notes, SharedMobileText(*facts.rows));
  if (!TellsHowToStop(sms)) Add(notes, QStringLiteral("This text tells nobody how to stop."));
  return notes;
}

QStringList EmailNotes(const QString& subject, const QString& body, const NoteFacts& facts) {
  if (subject.trimmed().isEmpty() && body.trimmed().isEmpty()) return {};
  QStringList notes;
  if (subject.trimmed().isEmpty()) Add(notes, QStringLiteral("The subject is empty."));
  AddFieldNotes(notes, subject + u'\n' + body, facts.data);
  const EmailIdentity identity = MakeEmailIdentity(facts.options);
  Add(notes, IdentityText(identity));
  Add(notes, UnusedNameText(facts.options, identity));
  if (facts.rows && facts.rows->emails > 0 && !identity.copyTo.isEmpty())
    Add(notes, QStringLiteral("%1 e-mails make %1 copies.").arg(facts.rows->emails));
  if (facts.rows) Add(notes, SharedAddressText(*facts.rows));
  if (!TellsHowToStop(body)) Add(notes, QStringLiteral("This e-mail tells nobody how to stop."));
  return notes;
}

QStringList LetterNotes(const QString& letter, KnownData data) {
  QStringList notes;
  AddFieldNotes(notes, letter, data);
  return notes;
}

}  // namespace qbx
