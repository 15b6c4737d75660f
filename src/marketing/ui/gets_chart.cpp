#include "marketing/ui/gets_chart.h"

#include <QClipboard>
#include <QColor>
#include <QFont>
#include <QGuiApplication>
#include <QMimeData>
#include <QPaintEvent>
#include <QPainter>
#include <QPalette>
#include <QRect>
#include <QSize>
#include <QString>
#include <algorithm>

namespace qbx {

namespace {

constexpr int kWidth = 270;
constexpr int kMargin = 8;
constexpr int kGap = 6;  // between a name, its bar and its number

qint64 Most(const std::vector<CountedRows>& bars) {
  qint64 most = 0;
  for (const CountedRows& bar : bars)
    most = std::max(most, bar.rows);
  return most;
}

}  // namespace

GetsChart::GetsChart(QWidget* parent) : QWidget(parent) {
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::Base);
}

void GetsChart::Show(const WhoGetsWhat& counts) {
  counts_ = counts;
  setAccessibleDescription(InWords(counts));
  setToolTip(InWords(counts));
  updateGeometry();
  update();
}

void GetsChart::Copy() {
  auto copied = std::make_unique<QMimeData>();
  copied->setImageData(grab().toImage());
  copied->setText(InWords(counts_));
  QGuiApplication::clipboard()->setMimeData(copied.release());
}

/// The number of lines, with two headings and half a line between the parts.
int GetsChart::Lines() const {
  const auto left = static_cast<int>(counts_.leftOut.size());
  return 1 + static_cast<int>(counts_.gets.size()) + (left > 0 ? 2 + left : 0);
}

QSize GetsChart::sizeHint() const {
  return {kWidth, Lines() * LineHeight() + 2 * kMargin};
}

QSize GetsChart::minimumSizeHint() const {
  return {kWidth, 0};
}

int GetsChart::PaintBars(QPainter& painter, const std::vector<CountedRows>& bars, qint64 most, const QColor& colour,
                         int top) const {
  int names = 0;
  for (const CountedRows& bar : bars)
    names = std::max(names, fontMetrics().horizontalAdvance(bar.what));
  names = std::min(names + 2, width() / 2);
  const int numbers = fontMetrics().horizontalAdvance(QString::number(most));
  const int left = kMargin + names + kGap;
  const int room = width() - left - kGap - numbers - kMargin;
  for (const CountedRows& bar : bars) {
    const QRect line(kMargin, top, width() - 2 * kMargin, LineHeight());
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(line, Qt::AlignVCenter | Qt::AlignLeft, fontMetrics().elidedText(bar.what, Qt::ElideRight, names));
    const auto length = most == 0 ? 0 : static_cast<int>(room * bar.rows / most);
    painter.fillRect(left, top + 3, std::max(length, bar.rows > 0 ? 1 : 0), LineHeight() - 6, colour);
    painter.drawText(QRect(left + length + kGap, top, numbers, LineHeight()), Qt::AlignVCenter | Qt::AlignLeft,
                     QString::number(bar.rows));
    top += LineHeight();
  }
  return top;
}

void GetsChart::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const auto heading = [&](const QString& text, int top) {
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(QRect(kMargin, top, width() - 2 * kMargin, LineHeight()), Qt::AlignVCenter, text);
    painter.setFont(font());
    return top + LineHeight();
  };
  int top = heading(QStringLiteral("Of %1 rows").arg(counts_.rows), kMargin);
  top = PaintBars(painter, counts_.gets, std::max(counts_.rows, Most(counts_.gets)),
                  palette().color(QPalette::Highlight), top);
  if (counts_.leftOut.empty()) return;
  top = heading(QStringLiteral("Left out by the query"), top + LineHeight() / 2);
  PaintBars(painter, counts_.leftOut, Most(counts_.leftOut), palette().color(QPalette::Mid), top);
}

}  // namespace qbx
