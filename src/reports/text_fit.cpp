#include "reports/text_fit.h"

#include <QFontMetricsF>
#include <QImage>
#include <cmath>

namespace qbx {

namespace {

constexpr qreal kShrinkStep = 0.5;  // points

QString ForLayout(const QString& text) {
  QString lines = text;
  lines.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  lines.replace(u'\r', u'\n');
  while (lines.endsWith(u'\n'))
    lines.chop(1);
  return lines.replace(u'\n', QChar::LineSeparator);
}

std::unique_ptr<QTextLayout> BreakLines(const QString& text, const ReportStyle& style, qreal points, qreal width) {
  auto layout = std::make_unique<QTextLayout>(text, FontOf(style, points), &LayoutDevice());
  QTextOption option(style.alignment);
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout->setTextOption(option);
  layout->beginLayout();
  qreal y = 0;
  for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine()) {
    line.setLineWidth(width);
    line.setPosition({0, y});
    y += line.height();
  }
  layout->endLayout();
  return layout;
}

/// The number of lines that fit.
int LinesIn(const QTextLayout& layout, qreal height) {
  int lines = 0;
  while (lines < layout.lineCount() && layout.lineAt(lines).rect().bottom() <= height + kLayoutTolerance)
    ++lines;
  return lines;
}

FittedText Shown(std::unique_ptr<QTextLayout> layout, qreal points, int lines) {
  const qreal height = lines == 0 ? 0 : layout->lineAt(lines - 1).rect().bottom();
  return {.lines = std::move(layout), .shown = lines, .height = height, .points = points};
}

/// The text up to its last line that fits, which ends in "…".
FittedText Cut(const FittedText& whole, const ReportStyle& style, qreal width) {
  const QTextLine last = whole.lines->lineAt(whole.shown - 1);
  const QString text = whole.lines->text();
  QString rest = text.mid(last.textStart());
  const qsizetype end = rest.indexOf(QChar::LineSeparator);
  if (end >= 0) rest = rest.left(end) + u'…';
  const QFontMetricsF metrics(FontOf(style, whole.points), &LayoutDevice());
  const QString cut = text.left(last.textStart()) + metrics.elidedText(rest, Qt::ElideRight, width);
  FittedText fitted = Shown(BreakLines(cut, style, whole.points, width), whole.points, whole.shown);
  fitted.fits = false;
  return fitted;
}

}  // namespace

QPaintDevice& LayoutDevice() {
  static QImage device = [] {
    QImage image(1, 1, QImage::Format_RGB32);
    image.setDotsPerMeterX(static_cast<int>(std::lround(kUnitsPerInch / 0.0254)));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    return image;
  }();
  return device;
}

QFont FontOf(const ReportStyle& style, qreal points) {
  QFont font(style.family);
  font.setPointSizeF(points);
  font.setBold(style.bold);
  font.setItalic(style.italic);
  font.setUnderline(style.underline);
  font.setHintingPreference(kHinting);
  return QFont(font, &LayoutDevice());
}

FittedText FitText(const QString& text, const TextObject& object, QSizeF frame) {
  const QString lines = ForLayout(text);
  const ReportStyle& style = object.style;
  const qreal least = object.shrinkTo > 0 ? std::min(object.shrinkTo, style.points) : style.points;
  for (qreal points = style.points;; points = std::max(least, points - kShrinkStep)) {
    auto layout = BreakLines(lines, style, points, frame.width());
    const int all = layout->lineCount();
    const int shown = object.canGrow ? all : LinesIn(*layout, frame.height());
    if (shown == all) return Shown(std::move(layout), points, all);
    if (points <= least) return Cut(Shown(std::move(layout), points, std::max(1, shown)), style, frame.width());
  }
}

QString WithoutBlankLines(const QString& text) {
  QString lines = text;
  lines.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  lines.replace(u'\r', u'\n');
  QStringList kept;
  for (const QString& line : lines.split(u'\n'))
    if (!line.trimmed().isEmpty()) kept += line.trimmed();
  return kept.join(u'\n');
}

}  // namespace qbx
