#include "util/text.h"

#include <QByteArray>
#include <QLocale>
#include <charconv>
#include <cmath>
#include <limits>

namespace qbx {

namespace {

bool IsDigit(QChar character) {
  return character >= u'0' && character <= u'9';
}

/// Where the number at the start of a text begins and ends.
struct NumberExtent {
  qsizetype start = 0;
  qsizetype end = 0;  ///< equal to start when there is none
  bool whole = true;  ///< neither fraction nor exponent
};

qsizetype SkipDigits(const QString& text, qsizetype position) {
  while (position < text.size() && IsDigit(text[position]))
    ++position;
  return position;
}

NumberExtent FindLeadingNumber(const QString& text) {
  NumberExtent extent;
  while (extent.start < text.size() && text[extent.start].isSpace())
    ++extent.start;
  extent.end = extent.start;
  qsizetype position = extent.start;
  if (position < text.size() && (text[position] == u'-' || text[position] == u'+')) ++position;
  const qsizetype wholeEnd = SkipDigits(text, position);
  qsizetype digits = wholeEnd - position;
  position = wholeEnd;
  if (position < text.size() && text[position] == u'.') {
    const qsizetype fractionEnd = SkipDigits(text, position + 1);
    const qsizetype fractionDigits = fractionEnd - position - 1;
    digits += fractionDigits;
    if (fractionDigits > 0) {
      extent.whole = false;
      position = fractionEnd;
    }
  }
  if (digits == 0) return extent;
  extent.end = position;
  if (position < text.size() && text[position].toUpper() == u'E') {
    qsizetype exponent = position + 1;
    if (exponent < text.size() && (text[exponent] == u'-' || text[exponent] == u'+')) ++exponent;
    const qsizetype exponentEnd = SkipDigits(text, exponent);
    if (exponentEnd > exponent) {
      extent.whole = false;
      extent.end = exponentEnd;
    }
  }
  return extent;
}

double ToDouble(const QString& text, const NumberExtent& extent) {
  const QByteArray digits = text.mid(extent.start, extent.end - extent.start).toLatin1();
  const char* const start = digits.startsWith('+') ? digits.begin() + 1 : digits.begin();
  double number = 0;
  if (std::from_chars(start, digits.end(), number).ec != std::errc::result_out_of_range) return number;
  const bool tooSmall = digits.contains("e-") || digits.contains("E-");
  if (tooSmall) return 0;
  return digits.startsWith('-') ? std::numeric_limits<double>::lowest() : std::numeric_limits<double>::max();
}

}  // namespace

QString SqlDoubled(const QString& text) {
  QString doubled = text;
  return doubled.replace(u'\'', QLatin1String("''"));
}

QString SqlQuoted(const QString& text) {
  return u'\'' + SqlDoubled(text) + u'\'';
}

double LeadingNumber(const QString& text) {
  return ToDouble(text, FindLeadingNumber(text));
}

qint64 LeadingInteger(const QString& text) {
  const NumberExtent extent = FindLeadingNumber(text);
  if (extent.whole) {
    bool fits = false;
    const qint64 number = text.mid(extent.start, extent.end - extent.start).toLongLong(&fits);
    if (fits) return number;
  }
  const double number = ToDouble(text, extent);
  constexpr double kBound = 9223372036854775808.0;  // 2^63, the first number that does not fit
  if (number >= kBound) return std::numeric_limits<qint64>::max();
  if (number < -kBound) return std::numeric_limits<qint64>::min();
  return std::llrint(number);
}

QString ShortestNumber(double number) {
  if (!std::isfinite(number) || number == 0) return QStringLiteral("0");
  return QString::number(number, 'f', QLocale::FloatingPointShortest);
}

bool EqualsNoCase(const QString& left, const QString& right) {
  return left.compare(right, Qt::CaseInsensitive) == 0;
}

QString TrimBlanks(const QString& text) {
  qsizetype start = 0;
  qsizetype end = text.size();
  while (start < end && text[start] == u' ')
    ++start;
  while (end > start && text[end - 1] == u' ')
    --end;
  return text.mid(start, end - start);
}

QString CutText(const QString& text, int maxLength) {
  if (text.size() <= maxLength) return text;
  if (maxLength <= 0) return {};
  const bool splitsPair = text[maxLength - 1].isHighSurrogate() && text[maxLength].isLowSurrogate();
  return text.left(splitsPair ? maxLength - 1 : maxLength);
}

}  // namespace qbx
