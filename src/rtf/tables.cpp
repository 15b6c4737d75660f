#include "rtf/tables.h"

#include <algorithm>

#include "rtf/code_pages.h"
#include "rtf/formats.h"
#include "rtf/tokens.h"

namespace qbx {
namespace {

constexpr int kBulletNumbering = 23;
constexpr int kNoNumbering = 255;
constexpr qsizetype kMaxAround = 8;  ///< characters before and after the number of a list item

QTextListFormat::Style BulletStyle(const QString& text) {
  const QChar bullet = text.size() > 1 ? text[1] : QChar();
  if (bullet == u'o' || bullet == u'\u25E6' || bullet == u'\u25CB') return QTextListFormat::ListCircle;
  if (bullet == u'\u00A7' || bullet == u'\uF0A7' || bullet == u'\u25AA' || bullet == u'\u25A0')
    return QTextListFormat::ListSquare;
  return QTextListFormat::ListDisc;
}

QTextListFormat::Style NumberStyle(int numbering) {
  switch (numbering) {
    case 1:
      return QTextListFormat::ListUpperRoman;
    case 2:
      return QTextListFormat::ListLowerRoman;
    case 3:
      return QTextListFormat::ListUpperAlpha;
    case 4:
      return QTextListFormat::ListLowerAlpha;
    default:
      return QTextListFormat::ListDecimal;
  }
}

}  // namespace

void RtfFonts::Word(QStringView name, int number) {
  if (name == u"f") {
    current_ = number;
    named_ = fonts_.size() >= kMaxFonts;
    if (!named_) fonts_[current_] = {};
  } else if (name == u"fcharset" && !named_) {
    fonts_[current_].codePage = CodePageOfCharset(number);
  }
}

void RtfFonts::Text(QStringView text) {
  if (named_) return;
  const qsizetype end = text.indexOf(u';');
  named_ = end >= 0;
  RtfFont& font = fonts_[current_];
  font.name += CleanedRtfText(named_ ? text.first(end) : text).replace(u'\t', u' ');
  font.name.truncate(kMaxFontName);
}

const RtfFont& RtfFonts::Find(int number) const {
  static const RtfFont kUnknown;
  const auto found = fonts_.constFind(number);
  return found == fonts_.constEnd() ? kUnknown : *found;
}

void RtfColours::Word(QStringView name, int number) {
  const bool known = name == u"red" || name == u"green" || name == u"blue";
  if (!known) return;
  if (!current_.isValid()) current_ = Qt::black;
  const int part = std::clamp(number, 0, 255);
  if (name == u"red") current_.setRed(part);
  if (name == u"green") current_.setGreen(part);
  if (name == u"blue") current_.setBlue(part);
}

void RtfColours::Text(QStringView text) {
  for (qsizetype ends = text.count(u';'); ends > 0; --ends) {
    colours_.append(current_);
    current_ = QColor();
  }
}

void RtfLists::TableWord(QStringView name, int number) {
  if (name == u"list") current_.clear();
  if (name == u"listlevel" && current_.size() <= kMaxListLevel) current_.append(Level());
  if (name == u"listid") lists_[number] = current_;
  if (name == u"levelnfc" && !current_.isEmpty()) current_.last().numbering = number;
}

void RtfLists::OverrideWord(QStringView name, int number) {
  if (name == u"listid") overridden_ = number;
  if (name == u"ls") overrides_[number] = overridden_;
}

void RtfLists::LevelText(QStringView text) {
  if (current_.isEmpty()) return;
  QString& known = current_.last().text;
  known += text.first(std::clamp<qsizetype>(3 * kMaxAround - known.size(), 0, text.size()));
}

std::optional<QTextListFormat> RtfLists::Find(int list, int level) const {
  const auto override = overrides_.constFind(list);
  if (override == overrides_.constEnd()) return std::nullopt;
  const QList<Level> levels = lists_.value(*override);
  if (level < 0 || level >= levels.size() || levels[level].numbering == kNoNumbering) return std::nullopt;
  return FormatOf(levels[level]);
}

QTextListFormat RtfLists::FormatOf(const Level& level) {
  QTextListFormat format;
  if (level.numbering == kBulletNumbering) {
    format.setStyle(BulletStyle(level.text));
    return format;
  }
  format.setStyle(NumberStyle(level.numbering));
  const auto isNumber = [](QChar unit) { return unit.unicode() <= kMaxListLevel; };
  const QString text = level.text.section(u';', 0, 0).mid(1);
  const auto first = std::find_if(text.begin(), text.end(), isNumber);
  if (first == text.end()) return format;
  const auto last = std::find_if(text.rbegin(), text.rend(), isNumber).base();
  format.setNumberPrefix(CleanedRtfText(text.left(first - text.begin())).left(kMaxAround));
  format.setNumberSuffix(CleanedRtfText(text.mid(last - text.begin())).left(kMaxAround));
  return format;
}

}  // namespace qbx
