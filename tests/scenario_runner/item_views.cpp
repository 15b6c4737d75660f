#include "item_views.h"

#include <QtWidgets>

#include "find_control.h"
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

// The texts of an item in all columns.
QStringList TextsIn(const QModelIndex& item) {
  QStringList texts;
  for (int column = 0; column < item.model()->columnCount(item.parent()); ++column)
    texts += PlainLines(item.siblingAtColumn(column).data().toString());
  return texts;
}

bool HasKey(const QModelIndex& item, const QString& key) {
  for (int role = Qt::UserRole; role <= kLastKeyRole; ++role) {
    const QVariant value = item.data(role);
    if (value.typeId() == QMetaType::QString && value.toString().compare(key, Qt::CaseInsensitive) == 0) return true;
  }
  return false;
}

}  // namespace

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

bool ColumnHidden(const QAbstractItemView& view, int column) {
  const QHeaderView* header = HeaderOf(view);
  return header != nullptr && header->isSectionHidden(column);
}

QHeaderView* HeaderOf(const QAbstractItemView& view) {
  if (const auto* table = qobject_cast<const QTableView*>(&view)) return table->horizontalHeader();
  if (const auto* tree = qobject_cast<const QTreeView*>(&view)) return tree->header();
  return nullptr;
}

QStringList ColumnCaptions(const QAbstractItemView& view) {
  QStringList captions;
  if (view.model() == nullptr) return captions;
  for (int column = 0; column < view.model()->columnCount(); ++column)
    captions += view.model()->headerData(column, Qt::Horizontal).toString();
  return captions;
}

int ColumnOf(const QAbstractItemView& view, const QVariant& column) {
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

QModelIndex CellAt(const QAbstractItemView& view, int row, const QVariant& column) {
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

QModelIndex ItemOf(const QAbstractItemView& view, const QVariant& item) {
  const QList<QModelIndex> items = AllItems(view);
  if (IsNumber(item)) {
    const int position = item.toInt() - (IsTree(view) ? 1 : 0);
    if (position >= 0 && position < items.size()) return items[position];
  } else {
    for (const QModelIndex& index : items) {
      if (TextsIn(index).contains(item.toString())) return index;
    }
    for (const QModelIndex& index : items) {
      if (HasKey(index, item.toString())) return index;
    }
  }
  QStringList rows;
  for (const QModelIndex& index : items)
    rows += TextsIn(index).join(QStringLiteral(" | "));
  throw ScenarioError(
      QStringLiteral("There is no item \"%1\" but %2.").arg(item.toString(), rows.join(QStringLiteral(", "))));
}

QVariant Shown(const QModelIndex& cell) {
  const QVariant tick = cell.data(Qt::CheckStateRole);
  if (tick.isValid()) return tick.toInt() == Qt::Checked;
  return PlainLines(cell.data().toString());
}

}  // namespace qbx::scenario
