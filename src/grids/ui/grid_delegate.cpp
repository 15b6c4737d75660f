#include "grids/ui/grid_delegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QColor>
#include <QEvent>
#include <QHelpEvent>
#include <QModelIndex>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPen>
#include <QRect>
#include <QRectF>
#include <QString>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStyleOptionViewItem>
#include <QTextDocument>
#include <QToolTip>
#include <cmath>

#include "grids/ui/grid_model.h"
#include "platform/ui/contrast.h"

namespace qbx {
namespace {
constexpr int kTextMargin = 3;
constexpr float kGreyed = 0.3F;
}  // namespace

void GridDelegate::SetWrap(bool wraps, bool all, const QString& field) {
  wraps_ = wraps;
  wrapsAll_ = all;
  wrapField_ = field;
}

bool GridDelegate::HasEditButton(int column) const {
  const GridColumn* found = model_.ColumnAt(column);
  return found != nullptr && !editButtons_.isEmpty() && editButtons_.contains(found->field.toLower());
}

QRect GridDelegate::EditButtonRect(const QRect& cell) {
  const int width = std::min(cell.width(), cell.height());
  return {cell.right() - width + 1, cell.top(), width, cell.height()};
}

void GridDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  const GridColumn* column = model_.ColumnAt(index.column());
  const bool wraps =
      wraps_ && column != nullptr && (wrapsAll_ || column->field.compare(wrapField_, Qt::CaseInsensitive) == 0);
  option->features.setFlag(QStyleOptionViewItem::WrapText, wraps);
  if (!wraps) option->text = OneLine(option->text);
  // The user's colours have no variant for a disabled grid.
  if ((option->state & QStyle::State_Enabled) == 0)
    option->palette.setColor(QPalette::Text, QApplication::palette().color(QPalette::Disabled, QPalette::Text));
}

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QStyleOptionViewItem cell = option;
  initStyleOption(&cell, index);
  const bool current = (cell.state & QStyle::State_HasFocus) != 0;
  cell.state &= ~(QStyle::State_HasFocus | QStyle::State_MouseOver);
  const QStyle* style = cell.widget != nullptr ? cell.widget->style() : QApplication::style();
  style->drawPrimitive(QStyle::PE_PanelItemViewItem, &cell, painter, cell.widget);
  if (model_.IsTick(index.column())) {
    if (!cell.text.isEmpty()) PaintTick(*painter, cell, cell.text == QLatin1String("Yes"));
  } else {
    cell.rect.adjust(kTextMargin, 0, -kTextMargin, 0);
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
    cell.rect = option.rect;
  }
  if (current) PaintCurrent(*painter, cell);
}

/// Draws a frame around the current cell, because the whole row is selected.
void GridDelegate::PaintCurrent(QPainter& painter, const QStyleOptionViewItem& option) const {
  const bool selected = (option.state & QStyle::State_Selected) != 0;
  painter.save();
  painter.setPen(option.palette.color(selected ? QPalette::HighlightedText : QPalette::Highlight));
  painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
  painter.restore();
  if (!HasEditButton(option.index.column())) return;
  const QStyle* style = option.widget != nullptr ? option.widget->style() : QApplication::style();
  QStyleOptionButton button;
  button.rect = EditButtonRect(option.rect);
  button.text = QStringLiteral("...");
  button.palette = option.palette;
  button.state = QStyle::State_Enabled | QStyle::State_Raised;
  style->drawControl(QStyle::CE_PushButton, &button, &painter, option.widget);
}

bool GridDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                             const QModelIndex& index) {
  if (event->type() != QEvent::ToolTip || !index.isValid() || model_.IsTick(index.column()))
    return QStyledItemDelegate::helpEvent(event, view, option, index);
  QStyleOptionViewItem cell = option;
  initStyleOption(&cell, index);
  const int width = cell.fontMetrics.horizontalAdvance(cell.text) + 4 * kTextMargin;
  const QString tip = width > cell.rect.width() ? index.data().toString() : QString();
  QToolTip::showText(event->globalPos(), tip.isEmpty() ? QString() : Qt::convertFromPlainText(tip), view);
  return true;
}

/// Draws a tick for yes. A cell that can be clicked has a thin box, which is seen even when it is empty. A flag without
/// effect is pale.
void GridDelegate::PaintTick(QPainter& painter, const QStyleOptionViewItem& option, bool ticked) const {
  const bool selected = (option.state & QStyle::State_Selected) != 0;
  const bool greyed = !model_.FlagReason(option.index).isEmpty();
  QColor ink = option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
  if (greyed) ink.setAlphaF(kGreyed);
  const double size = std::min(option.rect.height() - 4.0, option.fontMetrics.height() * 0.85);
  QRectF box(0, 0, std::floor(size), std::floor(size));
  box.moveCenter(QRectF(option.rect).center());
  box.moveTo(std::floor(box.left()) + 0.5, std::floor(box.top()) + 0.5);  // keeps a thin line within one row of pixels
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  if (model_.IsFlag(option.index.column())) {
    // Thinner than the tick, so it needs more contrast.
    const QColor background = selected ? option.palette.color(QPalette::Highlight)
                              : option.backgroundBrush.style() == Qt::NoBrush ? option.palette.color(QPalette::Base)
                                                                              : option.backgroundBrush.color();
    painter.setPen(QPen(greyed ? ink : Readable(background, ink, {background}, kMarkContrast), 1));
    painter.drawRoundedRect(box, 2, 2);
  }
  if (ticked) {
    QPainterPath tick;
    tick.moveTo(box.left() + size * 0.2, box.top() + size * 0.52);
    tick.lineTo(box.left() + size * 0.42, box.top() + size * 0.75);
    tick.lineTo(box.left() + size * 0.82, box.top() + size * 0.26);
    painter.setPen(QPen(ink, std::max(1.6, size * 0.14), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(tick);
  }
  painter.restore();
}

}  // namespace qbx
