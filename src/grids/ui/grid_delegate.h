// How the cells of a grid are drawn.

#pragma once

#include <QSet>
#include <QStyledItemDelegate>

namespace qbx {

class GridModel;

/// Draws ticks, wrapped texts in the columns that wrap, and the edit button of the current cell.
class GridDelegate final : public QStyledItemDelegate {
 public:
  explicit GridDelegate(const GridModel& model) : model_(model) {}

  /// Columns whose texts wrap: none, one (by field), or all.
  void SetWrap(bool wraps, bool all, const QString& field);
  void AddEditButton(const QString& field) { editButtons_.insert(field.toLower()); }
  [[nodiscard]] bool HasEditButton(int column) const;
  /// Where the edit button of a cell is drawn.
  [[nodiscard]] static QRect EditButtonRect(const QRect& cell);

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

 private:
  void PaintTick(QPainter& painter, const QStyleOptionViewItem& option, bool ticked) const;

  const GridModel& model_;
  QSet<QString> editButtons_;
  bool wraps_ = false;
  bool wrapsAll_ = false;
  QString wrapField_;
};

}  // namespace qbx
