// Drawing the cells of a grid.

#pragma once

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QModelIndex>
#include <QPainter>
#include <QRect>
#include <QSet>
#include <QString>
#include <QStyleOptionViewItem>
#include <QStyledItemDelegate>

namespace qbx {

class GridModel;

/// Draws ticks, texts (on one line except in columns that wrap), a frame around the current cell, and its edit button.
/// A text that is cut off is shown whole as a tip.
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
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

 private:
  void PaintTick(QPainter& painter, const QStyleOptionViewItem& option, bool ticked) const;
  void PaintCurrent(QPainter& painter, const QStyleOptionViewItem& option) const;

  const GridModel& model_;
  QSet<QString> editButtons_;
  bool wraps_ = false;
  bool wrapsAll_ = false;
  QString wrapField_;
};

}  // namespace qbx
