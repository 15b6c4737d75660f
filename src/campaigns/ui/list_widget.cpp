#include "campaigns/ui/list_widget.h"

#include <QAbstractItemView>
#include <QDateTime>
#include <QEvent>
#include <QFontMetrics>
#include <QHelpEvent>
#include <QMetaType>
#include <QModelIndex>
#include <QPartialOrdering>
#include <QSize>
#include <QStyleOptionViewItem>
#include <QStyledItemDelegate>
#include <QTextDocument>
#include <QToolTip>
#include <QTreeWidget>
#include <QTreeWidgetItem>
#include <QVariant>

#include "util/date_text.h"

namespace qbx {
namespace {

/// Longer texts are cut in a cell, because the list copies, measures and elides them. A tip is cut, too.
constexpr int kLongestCell = 300;
constexpr int kWholeTextRole = Qt::UserRole;
constexpr int kSortRole = Qt::UserRole + 1;
constexpr int kLongestTip = 1000;
constexpr int kRowPadding = 6;  // logical pixels between the lines of text

QString OneLine(const QString& text) {
  QString line = text.left(kLongestCell);
  for (QChar& character : line) {
    if (character.isSpace()) character = u' ';
  }
  return line;
}

QString TextOf(const QVariant& cell) {
  return cell.typeId() == QMetaType::QDateTime ? MinuteText(cell.toDateTime()) : cell.toString();
}

class Row : public QTreeWidgetItem {
 public:
  using QTreeWidgetItem::QTreeWidgetItem;
  bool operator<(const QTreeWidgetItem& other) const override {
    const int column = treeWidget()->sortColumn();
    const QVariant mine = data(column, kSortRole);
    if (mine.typeId() == QMetaType::QString) return QString::localeAwareCompare(text(column), other.text(column)) < 0;
    return QVariant::compare(mine, other.data(column, kSortRole)) == QPartialOrdering::Less;
  }
};

class CellDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override {
    if (event->type() != QEvent::ToolTip) return QStyledItemDelegate::helpEvent(event, view, option, index);
    const QVariant whole = index.data(kWholeTextRole);
    const QString text = whole.isNull() ? index.data().toString() : whole.toString();
    const bool cut = sizeHint(option, index).width() > view->visualRect(index).width() || text.size() > kLongestCell;
    // Converted to markup so that a name that looks like markup is shown unchanged.
    QToolTip::showText(event->globalPos(), cut ? Qt::convertFromPlainText(text.left(kLongestTip)) : QString(), view);
    return true;
  }

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    return QStyledItemDelegate::sizeHint(option, index) + QSize(0, kRowPadding);
  }
};

}  // namespace

void PrepareList(QTreeWidget& list) {
  list.setItemDelegate(new CellDelegate(&list));
  list.setSortingEnabled(true);
  list.sortByColumn(-1, Qt::AscendingOrder);
}

ListFilling::ListFilling(QTreeWidget& list) : list_(list) {
  list_.blockSignals(true);
  list_.setUpdatesEnabled(false);
  list_.setSortingEnabled(false);
  list_.clear();
}

ListFilling::~ListFilling() {
  list_.setSortingEnabled(true);
  list_.setUpdatesEnabled(true);
  list_.blockSignals(false);
}

QTreeWidgetItem* ListFilling::Add(const QVariantList& cells) {
  auto* row = new Row(&list_);
  for (int column = 0; column < cells.size(); ++column) {
    const QString text = TextOf(cells[column]);
    const QString line = OneLine(text);
    row->setText(column, line);
    row->setData(column, kSortRole, cells[column]);
    if (line != text) row->setData(column, kWholeTextRole, text);
  }
  return row;
}

QString WholeText(const QTreeWidgetItem& row, int column) {
  const QVariant whole = row.data(column, kWholeTextRole);
  return whole.isNull() ? row.text(column) : whole.toString();
}

void SetColumnWidths(QTreeWidget& list, const QStringList& samples) {
  const QFontMetrics metrics(list.font());
  const int margin = 2 * metrics.averageCharWidth() + 8;
  for (int column = 0; column < samples.size(); ++column) {
    list.setColumnWidth(column, metrics.horizontalAdvance(samples[column]) + margin);
  }
}

}  // namespace qbx
