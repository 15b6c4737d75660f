#include "campaigns/ui/list_widget.h"

#include <QtWidgets>

namespace qbx {
namespace {

/// A cell holds a longer text cut, since the list copies, measures and elides what its cells hold; a tip is cut too.
constexpr int kLongestCell = 300;
constexpr int kWholeTextRole = Qt::UserRole;
constexpr int kLongestTip = 1000;
constexpr int kRowPadding = 6;  // logical pixels between the lines of text

QString OneLine(const QString& text) {
  QString line = text.left(kLongestCell);
  for (QChar& character : line) {
    if (character.isSpace()) character = u' ';
  }
  return line;
}

/// What a cell is sorted by: a number, a date, or the text.
QVariant SortKey(const QString& text) {
  bool isNumber = false;
  const int number = text.toInt(&isNumber);
  if (isNumber) return number;
  const QDateTime date = QDateTime::fromString(text, u"dd/MM/yyyy HH:mm");
  if (date.isValid()) return date;
  return text;
}

class Row : public QTreeWidgetItem {
 public:
  using QTreeWidgetItem::QTreeWidgetItem;
  bool operator<(const QTreeWidgetItem& other) const override {
    const int column = treeWidget()->sortColumn();
    const QVariant mine = SortKey(text(column));
    const QVariant others = SortKey(other.text(column));
    if (mine.typeId() == QMetaType::QString || mine.typeId() != others.typeId()) {
      return QString::localeAwareCompare(text(column), other.text(column)) < 0;
    }
    return QVariant::compare(mine, others) == QPartialOrdering::Less;
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
    // As markup only so that a name that looks like markup is shown as it is.
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

QTreeWidgetItem* ListFilling::Add(const QStringList& texts) {
  auto* row = new Row(&list_);
  for (int column = 0; column < texts.size(); ++column) {
    const QString line = OneLine(texts[column]);
    row->setText(column, line);
    if (line != texts[column]) row->setData(column, kWholeTextRole, texts[column]);
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
