#include "dispatch/sms_text.h"

#include <QRegularExpression>

#include "dispatch/sms_credits.h"
#include "util/text.h"
#include "util/windows1252.h"

namespace qbx {

namespace {

/// Basic alphabet and extension table, without the table's escape and form feed, which nobody types.
constexpr char16_t kGsmCharacters[] =
    u"@\u00a3$\u00a5\u00e8\u00e9\u00f9\u00ec\u00f2\u00c7\n\u00d8\u00f8\r\u00c5\u00e5\u0394_\u03a6\u0393\u039b\u03a9\u03a0\u03a8\u03a3\u0398\u039e\u00c6\u00e6\u00df\u00c9 !\"#\u00a4%&'()*+,-./0123456789:;<=>?\u00a1ABCDEFGHIJKLMNOPQRSTUVWXYZ\u00c4\u00d6\u00d1\u00dc\u00a7\u00bfabcdefghijklmnopqrstuvwxyz\u00e4\u00f6\u00f1\u00fc\u00e0^{}\\[~]|\u20ac";

bool IsLoneBreak(const QString& text, qsizetype at) {
  if (text[at] == u'\n') return at == 0 || text[at - 1] != u'\r';
  return text[at] == u'\r' && (at + 1 == text.size() || text[at + 1] != u'\n');
}

QString WithWholeBreaks(const QString& text) {
  QString whole;
  whole.reserve(text.size());
  for (qsizetype at = 0; at < text.size(); ++at) {
    if (IsLoneBreak(text, at))
      whole += QLatin1String("\r\n");
    else
      whole += text[at];
  }
  return whole;
}

/// The characters of a text for which `holds` is true, each once.
template <typename Holds>
QString Collect(const QString& text, Holds holds) {
  QString found;
  for (qsizetype at = 0; at < text.size(); ++at) {
    const bool pair = text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
    const QString character = text.mid(at, pair ? 2 : 1);
    if (pair) ++at;
    if (holds(character) && !found.contains(character)) found += character;
  }
  return found;
}

bool ArrivesAsQuestionMark(const QString& character) {
  return character != u"?" && ToWindows1252(character) == "?";
}

}  // namespace

QString SmsText(const QString& merged) {
  const bool whole = SmsLength(merged) == merged.size();
  return (whole ? merged : WithWholeBreaks(merged)).left(kMaxSmsLength);
}

int SmsLength(const QString& text) {
  int length = static_cast<int>(text.size());
  for (qsizetype at = 0; at < text.size(); ++at)
    length += IsLoneBreak(text, at) ? 1 : 0;
  return length;
}

QString SmsCounterText(const QString& text) {
  const int length = SmsLength(text);
  return QStringLiteral("Chars: %1 / %2 max, approx. %3 Credit(s)")
      .arg(length)
      .arg(kMaxSmsLength)
      .arg(SMSCreditsFor(length, 1));
}

QString SmsAsSent(const QString& text) {
  return FromWindows1252(ToWindows1252(TrimBlanks(text)));
}

QString CharactersNotSent(const QString& text) {
  return Collect(text, ArrivesAsQuestionMark);
}

QString CharactersOutsideGsm(const QString& text) {
  static const QString gsm = QString::fromUtf16(kGsmCharacters);
  return Collect(
      text, [](const QString& character) { return !ArrivesAsQuestionMark(character) && !gsm.contains(character); });
}

bool TellsHowToStop(const QString& text) {
  static const QRegularExpression words(
      QStringLiteral("(?<![-\\w])(stop(?!\\w|\\s+(by|in|over)\\b)|opt(ing)?[- ]?out|unsubscribe)"),
      QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
  return words.match(text).hasMatch();
}

}  // namespace qbx
