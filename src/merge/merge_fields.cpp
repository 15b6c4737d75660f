#include "merge/merge_fields.h"

#include "merge/field_patterns.h"
#include "util/date_text.h"

namespace qbx {
namespace {

/// \return position of a text in lower case at or after `from`, -1 when there is none
qsizetype FindNoCase(QStringView text, QStringView folded, qsizetype from) {
  // Every field begins with a character that has no case; the library's search for it is fast.
  const QChar first = folded.front();
  const bool plainFirst = first < u'A' || (first > u'Z' && first < u'a') || (first > u'z' && first < u'\x80');
  for (qsizetype i = from; i <= text.size() - folded.size(); ++i) {
    if (plainFirst && (i = text.indexOf(first, i)) < 0) return -1;
    if (MatchesAt(text, i, folded)) return i;
  }
  return -1;
}

QString Folded(const QString& text) {
  QString folded = text;
  for (QChar& unit : folded)
    unit = QChar(FoldCase(unit.unicode()));
  return folded;
}

}  // namespace

bool MatchesAt(QStringView text, qsizetype position, QStringView folded) {
  if (folded.size() > text.size() - position) return false;
  const char16_t* units = text.utf16() + position;
  for (qsizetype i = 0; i < folded.size(); ++i) {
    if (FoldCase(units[i]) != folded[i].unicode()) return false;
  }
  return true;
}

QString FieldPattern(const MergeField& field, bool richText) {
  return (richText ? QStringLiteral("\\{%1\\}") : QStringLiteral("{%1}")).arg(QString::fromUtf16(field.word));
}

const QString& ReplaceNoCase(QString& text, const QString& find, const QString& replacement) {
  const QString folded = Folded(find);
  qsizetype found = FindNoCase(text, folded, 0);
  if (found < 0) return text;

  // The search goes on after the inserted text, so only the original text is searched.
  QString result;
  result.reserve(text.size() + replacement.size());
  const QStringView original = text;
  qsizetype copied = 0;
  while (found >= 0) {
    result += original.sliced(copied, found - copied);
    result += replacement;
    copied = found + find.size();
    found = FindNoCase(original, folded, copied);
  }
  result += original.sliced(copied);
  text = result;
  return text;
}

bool IsRichText(const QString& text) {
  return FindNoCase(text, u"{\\rtf", 0) >= 0;
}

QString MergeDate(QDate date) {
  return DayText(date);
}

QString MergeFields(const QString& text, const MergeValues& values, QDate today) {
  const bool richText = IsRichText(text);
  QString merged = text;
  for (const MergeField& field : kMergeFields) {
    ReplaceNoCase(merged, FieldPattern(field, richText), field.value ? values.*field.value : MergeDate(today));
  }
  return merged;
}

QString MergeFields(const QString& text, const QString& title, const QString& firstname, const QString& lastname,
                    const QString& contact, const QString& make, const QString& model, const QString& regno,
                    const QString& duedate, const QString& duetime, QDate today) {
  return MergeFields(text, {title, firstname, lastname, contact, make, model, regno, duedate, duetime}, today);
}

}  // namespace qbx
