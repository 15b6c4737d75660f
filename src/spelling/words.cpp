#include "spelling/words.h"

#include <QList>
#include <QTextBoundaryFinder>
#include <algorithm>

#include "merge/template_fields.h"

namespace qbx {
namespace {

bool IsApostrophe(QChar unit) {
  return unit == u'\'' || unit == u'\u2019';
}

QStringView WithoutMarksAround(QStringView stretch) {
  while (!stretch.isEmpty() && !stretch.front().isLetterOrNumber())
    stretch = stretch.sliced(1);
  while (!stretch.isEmpty() && !stretch.back().isLetterOrNumber())
    stretch.chop(1);
  return stretch;
}

bool IsLabel(QStringView label) {
  return !label.isEmpty() &&
         std::all_of(label.begin(), label.end(), [](QChar unit) { return unit.isLetterOrNumber() || unit == u'-'; });
}

/// Whether this is a web address such as "example.co.uk/offers", or an abbreviation such as "e.g".
bool IsDotted(QStringView stretch) {
  const qsizetype slash = stretch.indexOf(u'/');
  const QList<QStringView> labels = (slash < 0 ? stretch : stretch.first(slash)).split(u'.');
  if (labels.size() < 2 || !std::all_of(labels.begin(), labels.end(), IsLabel)) return false;
  const QStringView last = labels.back();
  const bool domain =
      last.size() > 1 && std::all_of(last.begin(), last.end(), [](QChar unit) { return unit.isLower(); });
  return domain || std::all_of(labels.begin(), labels.end(), [](QStringView label) { return label.size() == 1; });
}

bool IsAddress(QStringView stretch) {
  stretch = WithoutMarksAround(stretch);
  return stretch.contains(u'@') || stretch.contains(QLatin1String("://")) ||
         stretch.startsWith(QLatin1String("www."), Qt::CaseInsensitive) || IsDotted(stretch);
}

/// The text with blanks in place of fields and addresses. Positions do not change.
QString WithoutFieldsAndAddresses(const QString& text) {
  QString plain = text;
  const auto blank = [&plain](qsizetype start, qsizetype length) {
    std::fill_n(plain.begin() + start, length, QChar(u' '));
  };
  for (const FieldPlace& field : FieldPlaces(text))
    blank(field.start, field.length);
  for (qsizetype start = 0; start < plain.size(); ++start) {
    qsizetype end = start;
    while (end < plain.size() && !plain[end].isSpace())
      ++end;
    if (IsAddress(QStringView(plain).sliced(start, end - start))) blank(start, end - start);
    start = end;
  }
  return plain;
}

bool IsCapitals(QStringView word) {
  if (word.endsWith(u's')) word.chop(1);
  if (!word.isEmpty() && IsApostrophe(word.back())) word.chop(1);
  return word.size() > 1 && std::none_of(word.begin(), word.end(), [](QChar unit) { return unit.isLower(); });
}

bool IsWorthChecking(QStringView word) {
  return word.size() > 1 && word.front().isLetter() && !IsCapitals(word) &&
         std::none_of(word.begin(), word.end(), [](QChar unit) { return unit.isDigit(); });
}

}  // namespace

std::vector<WordPlace> WordsToCheck(const QString& text) {
  const QString plain = WithoutFieldsAndAddresses(text);
  std::vector<WordPlace> words;
  QTextBoundaryFinder finder(QTextBoundaryFinder::Word, plain);
  qsizetype start = 0;
  for (qsizetype end = finder.toNextBoundary(); end >= 0; end = finder.toNextBoundary()) {
    if (IsWorthChecking(QStringView(plain).sliced(start, end - start)))
      words.push_back({.start = start, .length = end - start});
    start = end;
  }
  return words;
}

std::optional<WordPlace> WordAt(const QString& text, qsizetype position) {
  for (const WordPlace& word : WordsToCheck(text)) {
    if (word.start <= position && position <= word.start + word.length) return word;
  }
  return std::nullopt;
}

}  // namespace qbx
