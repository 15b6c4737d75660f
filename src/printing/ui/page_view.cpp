#include "printing/ui/page_view.h"

#include <QColor>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPalette>
#include <QPointF>
#include <QRectF>
#include <QResizeEvent>
#include <QScrollBar>
#include <QSize>
#include <QSizeF>
#include <QStringList>
#include <QWheelEvent>
#include <QWidget>

#include "reports/page_painter.h"
#include "reports/rich_text_slices.h"

namespace qbx {

namespace {

constexpr int kBorder = 16;  // screen pixels around the sheet
constexpr qreal kSmallest = 0.2;
constexpr qreal kScreenDotsPerInch = 96;
constexpr QColor kFoundColour(255, 213, 0, 110);

}  // namespace

PageView::PageView(QWidget* parent) : QAbstractScrollArea(parent) {
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setBackgroundRole(QPalette::Mid);
  viewport()->setMouseTracking(true);
}

void PageView::SetSheet(const QSizeF& sheet) {
  sheet_ = sheet * (kScreenDotsPerInch / kUnitsPerInch);
  FitSheet();
}

void PageView::ShowPage(ReportPage page, int pages) {
  page_ = std::move(page);
  pages_ = pages;
  // Laid out here once, not at each painting.
  for (PlacedObject& placed : page_->objects)
    if (std::holds_alternative<RichTextObject>(placed.object->what))
      placed.document = LayOutRichText(placed.text, placed.frame.width());
  found_.clear();
  viewport()->update();
}

void PageView::MarkFound(std::vector<QRectF> places) {
  found_ = std::move(places);
  if (!found_.empty()) {
    const int middle = static_cast<int>(found_.front().center().y() * UnitsOnScreen()) - viewport()->height() / 2;
    verticalScrollBar()->setValue(middle);
  }
  viewport()->update();
}

void PageView::SetZoom(Fit fit, qreal scale) {
  fit_ = fit;
  scale_ = scale;
  FitSheet();
}

void PageView::FitSheet() {
  if (sheet_.isEmpty()) return;
  const QSizeF room = maximumViewportSize() - QSize(2 * kBorder, 2 * kBorder);
  const qreal byWidth = (room.width() - verticalScrollBar()->sizeHint().width()) / sheet_.width();
  const qreal byPage = std::min(room.width() / sheet_.width(), room.height() / sheet_.height());
  if (fit_ == Fit::kWidth) scale_ = std::max(kSmallest, byWidth);
  if (fit_ == Fit::kPage) scale_ = std::max(kSmallest, byPage);
  const QSizeF whole = sheet_ * scale_ + QSizeF(2 * kBorder, 2 * kBorder);
  const QSize view = viewport()->size();
  horizontalScrollBar()->setRange(0, std::max(0, qRound(whole.width()) - view.width()));
  verticalScrollBar()->setRange(0, std::max(0, qRound(whole.height()) - view.height()));
  horizontalScrollBar()->setPageStep(view.width());
  verticalScrollBar()->setPageStep(view.height());
  verticalScrollBar()->setSingleStep(40);
  viewport()->update();
}

qreal PageView::UnitsOnScreen() const {
  return scale_ * kScreenDotsPerInch / kUnitsPerInch;
}

QRectF PageView::SheetOnScreen() const {
  const QSizeF size = sheet_ * scale_;
  const qreal spare = (viewport()->width() - size.width()) / 2;
  return {
      QPointF(std::max<qreal>(kBorder, spare) - horizontalScrollBar()->value(), kBorder - verticalScrollBar()->value()),
      size};
}

void PageView::paintEvent(QPaintEvent*) {
  QPainter painter(viewport());
  painter.fillRect(viewport()->rect(), palette().mid());
  if (!page_) return;
  const QRectF sheet = SheetOnScreen();
  painter.fillRect(sheet.translated(3, 3), palette().shadow());
  painter.fillRect(sheet, Qt::white);
  painter.setClipRect(sheet);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
  painter.translate(sheet.topLeft());
  painter.scale(UnitsOnScreen(), UnitsOnScreen());
  PaintPage(painter, *page_, pages_);
  for (const QRectF& place : found_)
    painter.fillRect(place, kFoundColour);
}

void PageView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  FitSheet();
}

/// \return false when the end was reached and the page is turned instead
bool PageView::ScrollOrTurn(int by) {
  QScrollBar& bar = *verticalScrollBar();
  const bool atEnd = by > 0 ? bar.value() >= bar.maximum() : bar.value() <= bar.minimum();
  if (!atEnd) return true;
  const int before = page_ ? page_->number : 0;
  Q_EMIT Turned(by);
  const bool turned = page_ && page_->number != before;
  if (turned) bar.setValue(by > 0 ? bar.minimum() : bar.maximum());
  return !turned;
}

void PageView::keyPressEvent(QKeyEvent* event) {
  const bool down = event->key() == Qt::Key_PageDown || event->key() == Qt::Key_Down || event->key() == Qt::Key_Space;
  const bool up = event->key() == Qt::Key_PageUp || event->key() == Qt::Key_Up;
  if ((down || up) && !ScrollOrTurn(down ? 1 : -1)) return;
  QAbstractScrollArea::keyPressEvent(event);
}

void PageView::wheelEvent(QWheelEvent* event) {
  const int way = event->angleDelta().y();
  if (way == 0) return QAbstractScrollArea::wheelEvent(event);
  if (event->modifiers().testFlag(Qt::ControlModifier)) {
    Q_EMIT Zoomed(way > 0 ? 1 : -1);
    event->accept();
    return;
  }
  if (ScrollOrTurn(way > 0 ? -1 : 1)) QAbstractScrollArea::wheelEvent(event);
}

const DrillDown* PageView::DrillDownAt(const QPointF& place) const {
  if (!page_) return nullptr;
  const QPointF onPage = (place - SheetOnScreen().topLeft()) / UnitsOnScreen();
  const auto found = std::ranges::find_if(
      page_->drillDowns, [&onPage](const DrillDown& drillDown) { return drillDown.area.contains(onPage); });
  return found == page_->drillDowns.end() ? nullptr : &*found;
}

void PageView::mouseMoveEvent(QMouseEvent* event) {
  viewport()->setCursor(DrillDownAt(event->position()) != nullptr ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

void PageView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (const DrillDown* found = DrillDownAt(event->position()))
    Q_EMIT DrilledDown(QStringList(found->group));  // a copy, because the page is replaced meanwhile
}

}  // namespace qbx
