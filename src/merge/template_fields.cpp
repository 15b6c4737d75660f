#include "merge/template_fields.h"

#include "merge/field_patterns.h"
#include "merge/sample_customer.h"
#include "util/boat_wording.h"

namespace qbx {
namespace {

constexpr qsizetype kLongestWord = 30;

bool IsFieldCharacter(QChar unit, bool first) {
  if (unit.isLetter()) return true;
  return !first && (unit.isDigit() || unit == u' ' || unit == u'_' || unit == u'-');
}

QString Brace(QChar brace, bool richText) {
  return richText ? QString(u'\\') + brace : QString(brace);
}

/// The names of all fields of a template, known or unknown, in its order.
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

qsizetype FieldLength(QStringView text, bool richText) {
  const QString opening = Brace(u'{', richText);
  if (!text.startsWith(opening)) return 0;
  const qsizetype start = opening.size();
  qsizetype end = start;
  while (end < text.size() && end - start < kLongestWord && IsFieldCharacter(text[end], end == start))
    ++end;
  const bool closed = end > start && text.sliced(end).startsWith(Brace(u'}', richText));
  return closed ? end + opening.size() : 0;
}

std::vector<FieldMeaning> FieldMeanings(QDate today, bool boatEdition) {
  std::vector<FieldMeaning> meanings;
  meanings.reserve(std::size(kMergeFields));
  for (const MergeField& field : kMergeFields) {
    const QString pattern = FieldPattern(field, false);
    const QString meaning = QString::fromLatin1(field.meaning);
    meanings.push_back({.field = pattern,
                        .meaning = boatEdition ? BoatWording(meaning) : meaning,
                        .example = MergeFields(pattern, SampleMergeValues(), today)});
  }
  return meanings;
}

std::vector<FieldPlace> FieldPlaces(const QString& text) {
  const bool richText = IsRichText(text);
  const QString opening = Brace(u'{', richText);
  std::vector<FieldPlace> places;
  for (qsizetype at = text.indexOf(opening); at >= 0; at = text.indexOf(opening, at + 1)) {
    const qsizetype length = FieldLength(QStringView(text).sliced(at), richText);
    if (length > 0) places.push_back({.start = at, .length = length});
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
