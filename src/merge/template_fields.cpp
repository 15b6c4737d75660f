#include "merge/template_fields.h"

#include "merge/field_patterns.h"
#include "merge/sample_customer.h"

namespace qbx {
namespace {

constexpr qsizetype kLongestWord = 30;

bool MayStand(QChar unit, bool first) {
  if (unit.isLetter()) return true;
  return !first && (unit.isDigit() || unit == u' ' || unit == u'_' || unit == u'-');
}

/// The words of all fields of a template, known or not, in its order.
QStringList FieldWords(const QString& text) {
  const qsizetype brace = IsRichText(text) ? 2 : 1;
  QStringList words;
  for (const FieldPlace& place : FieldPlaces(text))
    words.append(text.mid(place.start + brace, place.length - 2 * brace));
  return words;
}

const MergeField* FindField(const QString& word) {
  for (const MergeField& field : kMergeFields) {
    const QString known = QString::fromUtf16(field.word);
    if (known.size() == word.size() && MatchesAt(word, 0, known)) return &field;
  }
  return nullptr;
}

bool StaysEmpty(FieldSource source, KnownData data) {
  switch (source) {
    case FieldSource::kCustomer:
      return false;
    case FieldSource::kVehicle:
      return !data.vehicle;
    case FieldSource::kDueDate:
      return !data.dueDate;
    case FieldSource::kNowhere:
      break;
  }
  return true;
}

}  // namespace

std::vector<FieldMeaning> FieldMeanings(QDate today) {
  std::vector<FieldMeaning> meanings;
  meanings.reserve(std::size(kMergeFields));
  for (const MergeField& field : kMergeFields) {
    const QString pattern = FieldPattern(field, false);
    meanings.push_back({pattern, QString::fromLatin1(field.meaning), MergeFields(pattern, SampleMergeValues(), today)});
  }
  return meanings;
}

std::vector<FieldPlace> FieldPlaces(const QString& text) {
  const bool richText = IsRichText(text);
  const QString opening = richText ? u"\\{"_qs : u"{"_qs;
  const QString closing = richText ? u"\\}"_qs : u"}"_qs;
  std::vector<FieldPlace> places;
  for (qsizetype at = text.indexOf(opening); at >= 0; at = text.indexOf(opening, at + 1)) {
    const qsizetype start = at + opening.size();
    qsizetype end = start;
    while (end < text.size() && end - start < kLongestWord && MayStand(text[end], end == start))
      ++end;
    if (end > start && QStringView(text).sliced(end).startsWith(closing))
      places.push_back({.start = at, .length = end + closing.size() - at});
  }
  return places;
}

QStringList UnknownFields(const QString& text) {
  QStringList unknown;
  for (const QString& word : FieldWords(text)) {
    if (FindField(word) == nullptr) unknown.append(u'{' + word + u'}');
  }
  unknown.removeDuplicates();
  return unknown;
}

QStringList EmptyFields(const QString& text, KnownData data) {
  QStringList empty;
  for (const QString& word : FieldWords(text)) {
    const MergeField* const field = FindField(word);
    if (field != nullptr && StaysEmpty(field->source, data)) empty.append(FieldPattern(*field, false));
  }
  empty.removeDuplicates();
  return empty;
}

}  // namespace qbx
