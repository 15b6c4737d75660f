// Choosing and clicking in lists, trees and grids.

#include <QtTest>
#include <QtWidgets>

#include "find_control.h"
#include "item_views.h"
#include "mouse_and_keys.h"
#include "scenario_error.h"
#include "use_control.h"

namespace qbx::scenario {
namespace {

void ClickItem(QAbstractItemView& view, const QModelIndex& item, const QString& name, const Click& click = {}) {
  MakeUsable(view, name);
  view.scrollTo(item);
  Settle();
  const QRect place = view.visualRect(item).intersected(view.viewport()->rect());
  if (place.isEmpty())
    throw ScenarioError(QStringLiteral("\"%1\" of %2 cannot be seen.").arg(item.data().toString(), name));
  ClickAt(*view.viewport(), place.center(), name, click);
}

bool TakesManyByClick(const QAbstractItemView& view) {
  return view.selectionMode() == QAbstractItemView::MultiSelection;
}

// Exactly these, by clicks.
void ChooseAll(QAbstractItemView& view, const QString& name, const QVariantList& wanted) {
  QList<QPersistentModelIndex> items;
  for (const QVariant& item : wanted)
    items += QPersistentModelIndex(ItemOf(view, item));
  if (TakesManyByClick(view)) {
    for (const QModelIndex& item : AllItems(view)) {
      if (view.selectionModel()->isSelected(item) != items.contains(QPersistentModelIndex(item)))
        ClickItem(view, item, name);
    }
    return;
  }
  bool first = true;
  for (const QPersistentModelIndex& item : items) {
    ClickItem(view, item, name, {.modifiers = first ? Qt::NoModifier : Qt::ControlModifier});
    first = false;
  }
}

void Choose(QAbstractItemView& view, const QString& name, const Arguments& arguments) {
  const QVariant wanted = arguments.value(0);
  if (wanted.typeId() == QMetaType::QVariantList) {
    ChooseAll(view, name, wanted.toList());
  } else {
    const QModelIndex item = ItemOf(view, wanted);
    ClickItem(view, item, name, {.modifiers = ReadModifiers(TextAt(arguments, 1))});
  }
}

// A column whose cells do nothing when they are clicked.
int PlainColumn(QAbstractItemView& view, int row) {
  const QHeaderView* header = HeaderOf(view);
  for (int place = 0; header != nullptr && place < header->count(); ++place) {
    const int column = header->logicalIndex(place);
    const QString text = Shown(CellAt(view, row, column)).toString();
    const bool flag = text == QLatin1String("Yes") || text == QLatin1String("No");
    if (!header->isSectionHidden(column) && !flag) return column;
  }
  return 0;
}

void SelectRows(QAbstractItemView& view, const QString& name, const QVariantList& rows) {
  bool first = true;
  for (const QVariant& row : rows) {
    const int number = row.toInt();
    (void)CellAt(view, number, 0);
    ClickItem(view, CellAt(view, number, PlainColumn(view, number)), name,
              {.modifiers = first ? Qt::NoModifier : Qt::ControlModifier});
    first = false;
  }
}

void ClickHeading(QAbstractItemView& view, const QString& name, const QVariant& column, Qt::MouseButton button) {
  QHeaderView* header = HeaderOf(view);
  if (header == nullptr || !header->isVisible()) throw ScenarioError(QStringLiteral("%1 has no headings.").arg(name));
  const int section = ColumnOf(view, column);
  if (header->isSectionHidden(section))
    throw ScenarioError(QStringLiteral("Column \"%1\" of %2 is hidden.").arg(column.toString(), name));
  MakeUsable(view, name);
  if (view.model()->rowCount(view.rootIndex()) > 0) {
    const int top = view.indexAt(QPoint(1, 1)).row();
    view.scrollTo(view.model()->index(std::max(0, top), section, view.rootIndex()));
  }
  const QPoint place(header->sectionViewportPosition(section) + header->sectionSize(section) / 2,
                     header->viewport()->height() / 2);
  ClickAt(*header->viewport(), place, name, {.button = button});
}

bool UseCells(QAbstractItemView& view, const QString& name, const QString& action, const Arguments& arguments) {
  Click click;
  if (action == QLatin1String("doubleClickCell")) {
    click.twice = true;
  } else if (action == QLatin1String("rightClickCell")) {
    click.button = Qt::RightButton;
  } else if (action != QLatin1String("clickCell")) {
    return false;
  }
  click.modifiers = ReadModifiers(TextAt(arguments, 2));
  const QModelIndex cell = CellAt(view, NumberAt(arguments, 0), arguments.value(1));
  const QHeaderView* header = HeaderOf(view);
  if (header != nullptr && header->isSectionHidden(cell.column()))
    throw ScenarioError(QStringLiteral("Column \"%1\" of %2 is hidden.").arg(TextAt(arguments, 1), name));
  ClickItem(view, cell, name, click);
  return true;
}

}  // namespace

bool UseItems(QAbstractItemView& view, const QString& name, const QString& action, const Arguments& arguments) {
  if (UseCells(view, name, action, arguments)) return true;
  if (action == QLatin1String("choose")) {
    Choose(view, name, arguments);
  } else if (action == QLatin1String("toggle")) {
    ClickItem(view, ItemOf(view, arguments.value(0)), name,
              {.modifiers = TakesManyByClick(view) ? Qt::NoModifier : Qt::ControlModifier});
  } else if (action == QLatin1String("selectRows")) {
    SelectRows(view, name, ListAt(arguments, 0));
  } else if (action == QLatin1String("clickHeading")) {
    ClickHeading(view, name, arguments.value(0), Qt::LeftButton);
  } else if (action == QLatin1String("rightClickHeading")) {
    ClickHeading(view, name, arguments.value(0), Qt::RightButton);
  } else if (action == QLatin1String("doubleClick")) {
    if (arguments.isEmpty()) return false;
    ClickItem(view, ItemOf(view, arguments.value(0)), name, {.twice = true});
  } else if (action == QLatin1String("scrollToRow")) {
    view.scrollTo(CellAt(view, NumberAt(arguments, 0), FirstColumn(view)), QAbstractItemView::PositionAtTop);
    Settle();
  } else if (action == QLatin1String("moveColumn")) {
    if (HeaderOf(view) == nullptr) return false;
    HeaderOf(view)->moveSection(HeaderOf(view)->visualIndex(ColumnOf(view, arguments.value(0))),
                                NumberAt(arguments, 1));
    Settle();
  } else if (action == QLatin1String("resizeColumn")) {
    if (HeaderOf(view) == nullptr) return false;
    HeaderOf(view)->resizeSection(ColumnOf(view, arguments.value(0)), NumberAt(arguments, 1));
    Settle();
  } else {
    return false;
  }
  return true;
}

}  // namespace qbx::scenario
