// How the cells of a grid are drawn.

#include "grids/ui/grid_delegate.h"

#include <QtWidgets>

#include "grids/ui/grid_model.h"

namespace qbx {

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
}

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QStyleOptionViewItem cell = option;
  initStyleOption(&cell, index);
  const QStyle* style = cell.widget != nullptr ? cell.widget->style() : QApplication::style();
  if (model_.IsTick(index.column())) {
    const QString text = std::exchange(cell.text, QString());
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
    if (!text.isEmpty()) PaintTick(*painter, cell, text == QLatin1String("Yes"));
    return;
  }
  style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
  if ((cell.state & QStyle::State_HasFocus) == 0 || !HasEditButton(index.column())) return;
  QStyleOptionButton button;
  button.rect = EditButtonRect(cell.rect);
  button.text = QStringLiteral("...");
  button.palette = cell.palette;
  button.state = QStyle::State_Enabled | QStyle::State_Raised;
  style->drawControl(QStyle::CE_PushButton, &button, painter, cell.widget);
}

/// A tick for yes, in a thin box where a click changes it; so an empty box can be seen to be clickable.
void GridDelegate::PaintTick(QPainter& painter, const QStyleOptionViewItem& option, bool ticked) const {
  const bool selected = (option.state & QStyle::State_Selected) != 0;
  const QColor ink = option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
  const double size = std::min(option.rect.height() - 4.0, option.fontMetrics.height() * 0.85);
  QRectF box(0, 0, size, size);
  box.moveCenter(QRectF(option.rect).center());
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  if (model_.IsFlag(option.index.column())) {
    QColor frame = ink;
    frame.setAlphaF(0.35F);
    painter.setPen(QPen(frame, 1));
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
