#include "item_views.h"

#include <QtWidgets>

#include "find_control.h"
#include "read_control.h"
#include "scenario_error.h"

namespace qbx::scenario {
namespace {

constexpr int kLastKeyRole = Qt::UserRole + 8;

void Collect(const QAbstractItemView& view, const QModelIndex& parent, int column, QList<QModelIndex>& items) {
  for (int row = 0; row < view.model()->rowCount(parent); ++row) {
    items += view.model()->index(row, column, parent);
    Collect(view, view.model()->index(row, 0, parent), column, items);
  }
}

bool ShowsText(const QModelIndex& item, const QString& text) {
  for (int column = 0; column < item.model()->columnCount(item.parent()); ++column) {
    if (PlainLines(item.siblingAtColumn(column).data().toString()) == text) return true;
  }
  return false;
}

bool HasKey(const QModelIndex& item, const QString& key) {
  for (int role = Qt::UserRole; role <= kLastKeyRole; ++role) {
    const QVariant value = item.data(role);
    if (value.typeId() == QMetaType::QString && value.toString().compare(key, Qt::CaseInsensitive) == 0) return true;
  }
  return false;
}

QVariant KeyOf(const QModelIndex& item) {
  for (int role = Qt::UserRole; role <= kLastKeyRole; ++role) {
    if (item.data(role).typeId() == QMetaType::QString) return item.data(role);
  }
  return item.data(Qt::UserRole);
}

bool IsTree(const QAbstractItemView& view) {
  const auto* tree = qobject_cast<const QTreeView*>(&view);
  return tree != nullptr && tree->rootIsDecorated();
}

bool ColumnHidden(QAbstractItemView& view, int column) {
  const QHeaderView* header = HeaderOf(view);
  return header != nullptr && header->isSectionHidden(column);
}

// In the order in which the columns stand on the screen.
QStringList Columns(QAbstractItemView& view, bool hidden) {
  const QStringList captions = ColumnCaptions(view);
  const QHeaderView* header = HeaderOf(view);
  QStringList columns;
  for (int place = 0; place < captions.size(); ++place) {
    const int column = header != nullptr ? header->logicalIndex(place) : place;
    if (column >= 0 && ColumnHidden(view, column) == hidden) columns += captions.value(column);
  }
  return columns;
}

QVariant Sort(QAbstractItemView& view) {
  const QHeaderView* header = HeaderOf(view);
  if (header == nullptr || !header->isSortIndicatorShown() || header->sortIndicatorSection() < 0 ||
      header->sortIndicatorSection() >= header->count())
    return QVariant::fromValue(nullptr);
  const bool ascending = header->sortIndicatorOrder() == Qt::AscendingOrder;
  return QVariantMap{
      {QStringLiteral("column"), ColumnCaptions(view).value(header->sortIndicatorSection())},
      {QStringLiteral("direction"), ascending ? QStringLiteral("ascending") : QStringLiteral("descending")}};
}

QVariantList SelectedRows(const QAbstractItemView& view) {
  QList<int> rows;
  for (const QModelIndex& index : view.selectionModel()->selectedIndexes()) {
    if (!rows.contains(index.row())) rows += index.row();
  }
  std::sort(rows.begin(), rows.end());
  return QVariantList(rows.begin(), rows.end());
}

QVariantList SelectedTexts(const QAbstractItemView& view) {
  QVariantList texts;
  for (const QModelIndex& item : AllItems(view)) {
    if (view.selectionModel()->isSelected(item)) texts += PlainLines(item.data().toString());
  }
  return texts;
}

QVariant RowTexts(QAbstractItemView& view, int row) {
  QVariantMap cells;
  const QStringList captions = ColumnCaptions(view);
  for (int column = 0; column < captions.size(); ++column)
    cells.insert(captions[column], Shown(CellAt(view, row, column)));
  return cells;
}

QVariant CellColours(const QModelIndex& cell, const QAbstractItemView& view) {
  const auto colour = [&](int role, QPalette::ColorRole missing) {
    const QVariant value = cell.data(role);
    const QColor found = value.canConvert<QBrush>() ? value.value<QBrush>().color() : value.value<QColor>();
    return (found.isValid() ? found : view.palette().color(missing)).name(QColor::HexRgb);
  };
  return QVariantMap{{QStringLiteral("text"), colour(Qt::ForegroundRole, QPalette::Text)},
                     {QStringLiteral("background"), colour(Qt::BackgroundRole, QPalette::Base)}};
}

QVariant ReadSelection(QAbstractItemView& view, const QString& property) {
  const QModelIndex current = view.currentIndex();
  if (property == QLatin1String("currentRow")) return current.isValid() ? current.row() : -1;
  if (property == QLatin1String("currentColumn"))
    return current.isValid() ? QVariant(ColumnCaptions(view).value(current.column())) : QVariant::fromValue(nullptr);
  if (property == QLatin1String("selectedRows")) return SelectedRows(view);
  if (property == QLatin1String("selectedTexts")) return SelectedTexts(view);
  if (property == QLatin1String("selectedText")) return SelectedTexts(view).value(0).toString();
  if (property == QLatin1String("selectedIndex")) {
    const QList<QModelIndex> items = AllItems(view);
    for (qsizetype i = 0; i < items.size(); ++i) {
      if (view.selectionModel()->isSelected(items[i])) return static_cast<int>(i) + (IsTree(view) ? 1 : 0);
    }
    return -1;
  }
  return {};
}

QStringList ItemTexts(const QAbstractItemView& view) {
  QStringList texts;
  for (const QModelIndex& item : AllItems(view))
    texts += PlainLines(item.data().toString());
  return texts;
}

}  // namespace

QHeaderView* HeaderOf(const QAbstractItemView& view) {
  if (const auto* table = qobject_cast<const QTableView*>(&view)) return table->horizontalHeader();
  if (const auto* tree = qobject_cast<const QTreeView*>(&view)) return tree->header();
  return nullptr;
}

QStringList ColumnCaptions(QAbstractItemView& view) {
  QStringList captions;
  if (view.model() == nullptr) return captions;
  for (int column = 0; column < view.model()->columnCount(); ++column)
    captions += view.model()->headerData(column, Qt::Horizontal).toString();
  return captions;
}

int ColumnOf(QAbstractItemView& view, const QVariant& column) {
  const QStringList captions = ColumnCaptions(view);
  if (!column.isValid()) return 0;
  const QString name = column.toString();
  qsizetype found = IsNumber(column) ? column.toInt() : captions.indexOf(name);
  if (found < 0) found = captions.indexOf(QString(name).replace(QLatin1Char('_'), QLatin1Char(' ')));
  if (found >= 0 && found < captions.size()) return static_cast<int>(found);
  throw ScenarioError(
      QStringLiteral("There is no column \"%1\" but %2.").arg(name, captions.join(QStringLiteral(", "))));
}

int FirstColumn(const QAbstractItemView& view) {
  if (const auto* list = qobject_cast<const QListView*>(&view)) return list->modelColumn();
  const QHeaderView* header = HeaderOf(view);
  for (int place = 0; header != nullptr && place < header->count(); ++place) {
    if (!header->isSectionHidden(header->logicalIndex(place))) return header->logicalIndex(place);
  }
  return 0;
}

QModelIndex CellAt(QAbstractItemView& view, int row, const QVariant& column) {
  const int rows = view.model() == nullptr ? 0 : view.model()->rowCount(view.rootIndex());
  if (row < 0 || row >= rows)
    throw ScenarioError(QStringLiteral("There is no row %1; there are %2 rows, from 0.").arg(row).arg(rows));
  return view.model()->index(row, ColumnOf(view, column), view.rootIndex());
}

QList<QModelIndex> AllItems(const QAbstractItemView& view) {
  QList<QModelIndex> items;
  if (view.model() != nullptr) Collect(view, view.rootIndex(), FirstColumn(view), items);
  return items;
}

QModelIndex ItemOf(QAbstractItemView& view, const QVariant& item) {
  const QList<QModelIndex> items = AllItems(view);
  if (IsNumber(item)) {
    const int position = item.toInt() - (IsTree(view) ? 1 : 0);
    if (position >= 0 && position < items.size()) return items[position];
  } else {
    for (const QModelIndex& index : items) {
      if (ShowsText(index, item.toString())) return index;
    }
    for (const QModelIndex& index : items) {
      if (HasKey(index, item.toString())) return index;
    }
  }
  QStringList rows;
  for (const QModelIndex& index : items) {
    QStringList cells;
    for (int column = 0; column < view.model()->columnCount(index.parent()); ++column)
      cells += PlainLines(index.siblingAtColumn(column).data().toString());
    rows += cells.join(QStringLiteral(" | "));
  }
  throw ScenarioError(
      QStringLiteral("There is no item \"%1\" but %2.").arg(item.toString(), rows.join(QStringLiteral(", "))));
}

QVariant Shown(const QModelIndex& cell) {
  const QVariant tick = cell.data(Qt::CheckStateRole);
  if (tick.isValid()) return tick.toInt() == Qt::Checked;
  return PlainLines(cell.data().toString());
}

QVariant ReadItems(QAbstractItemView& view, const QString& property, const Arguments& arguments) {
  if (property == QLatin1String("items")) return ItemTexts(view);
  if (property == QLatin1String("keys")) {
    QVariantList keys;
    for (const QModelIndex& item : AllItems(view))
      keys += KeyOf(item);
    return keys;
  }
  if (property == QLatin1String("rowCount"))
    return view.model() == nullptr ? 0 : view.model()->rowCount(view.rootIndex());
  if (property == QLatin1String("columns")) return Columns(view, false);
  if (property == QLatin1String("hiddenColumns")) return Columns(view, true);
  if (property == QLatin1String("cell")) return Shown(CellAt(view, NumberAt(arguments, 0), arguments.value(1)));
  if (property == QLatin1String("row")) return RowTexts(view, NumberAt(arguments, 0));
  if (property == QLatin1String("cellColours"))
    return CellColours(CellAt(view, NumberAt(arguments, 0), arguments.value(1)), view);
  if (property == QLatin1String("sort")) return Sort(view);
  if (property == QLatin1String("firstVisibleRow")) return view.indexAt(QPoint(1, 1)).row();
  if (property == QLatin1String("columnWidth")) {
    const QHeaderView* header = HeaderOf(view);
    if (header != nullptr) return header->sectionSize(ColumnOf(view, arguments.value(0)));
  }
  return ReadSelection(view, property);
}

}  // namespace qbx::scenario
