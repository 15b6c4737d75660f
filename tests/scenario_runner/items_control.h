// Lists, trees and grids for scenarios.

#pragma once

#include "control.h"
#include "find_control.h"
#include "item_views.h"
#include "scenario_error.h"

namespace qbx::scenario {

class ItemsControl final : public WidgetControl {
  Q_OBJECT
 public:
  ItemsControl(QAbstractItemView& view, const QString& name) : WidgetControl(view, name), view_(view) {}

  Q_INVOKABLE QVariant items() const { return Texts(false); }
  Q_INVOKABLE QVariant keys() const {
    QVariantList keys;
    for (const QModelIndex& item : AllItems(view_))
      keys += KeyOf(item);
    return keys;
  }
  Q_INVOKABLE QVariant selectedIndex() const {
    const QList<QModelIndex> items = AllItems(view_);
    for (qsizetype i = 0; i < items.size(); ++i) {
      if (view_.selectionModel()->isSelected(items[i])) return static_cast<int>(i) + (IsTree(view_) ? 1 : 0);
    }
    return -1;
  }
  Q_INVOKABLE QVariant selectedText() const { return Texts(true).toStringList().value(0); }
  Q_INVOKABLE QVariant selectedTexts() const { return Texts(true); }
  Q_INVOKABLE QVariant selectedRows() const {
    QList<int> rows;
    for (const QModelIndex& index : view_.selectionModel()->selectedIndexes()) {
      if (!rows.contains(index.row())) rows += index.row();
    }
    std::sort(rows.begin(), rows.end());
    return QVariantList(rows.begin(), rows.end());
  }
  Q_INVOKABLE QVariant rowCount() const {
    return view_.model() == nullptr ? 0 : view_.model()->rowCount(view_.rootIndex());
  }
  Q_INVOKABLE QVariant columns() const { return Columns(false); }
  Q_INVOKABLE QVariant hiddenColumns() const { return Columns(true); }
  Q_INVOKABLE QVariant firstVisibleRow() const { return view_.indexAt(QPoint(1, 1)).row(); }
  Q_INVOKABLE QVariant currentRow() const { return view_.currentIndex().row(); }
  Q_INVOKABLE QVariant currentColumn() const {
    const QModelIndex current = view_.currentIndex();
    return current.isValid() ? QVariant(ColumnCaptions(view_).value(current.column())) : QVariant::fromValue(nullptr);
  }
  Q_INVOKABLE QVariant sort() const {
    const QHeaderView* header = HeaderOf(view_);
    if (header == nullptr || !header->isSortIndicatorShown() || header->sortIndicatorSection() < 0 ||
        header->sortIndicatorSection() >= header->count())
      return QVariant::fromValue(nullptr);
    const bool ascending = header->sortIndicatorOrder() == Qt::AscendingOrder;
    return QVariantMap{{"column", ColumnCaptions(view_).value(header->sortIndicatorSection())},
                       {"direction", ascending ? "ascending" : "descending"}};
  }
  Q_INVOKABLE QVariant cell(int row, const QVariant& column) const { return Shown(CellAt(view_, row, column)); }
  Q_INVOKABLE QVariant cellColours(int row, const QVariant& column) const {
    const QModelIndex cell = CellAt(view_, row, column);
    const auto colour = [&](int role, QPalette::ColorRole missing) {
      const QVariant value = cell.data(role);
      const QColor found = value.canConvert<QBrush>() ? value.value<QBrush>().color() : value.value<QColor>();
      return (found.isValid() ? found : view_.palette().color(missing)).name(QColor::HexRgb);
    };
    return QVariantMap{{"text", colour(Qt::ForegroundRole, QPalette::Text)},
                       {"background", colour(Qt::BackgroundRole, QPalette::Base)}};
  }
  Q_INVOKABLE QVariant row(int row) const {
    QVariantMap cells;
    const QStringList captions = ColumnCaptions(view_);
    for (int column = 0; column < captions.size(); ++column)
      cells.insert(captions[column], Shown(CellAt(view_, row, column)));
    return cells;
  }
  Q_INVOKABLE QVariant columnWidth(const QVariant& column) const {
    const QHeaderView* header = HeaderOf(view_);
    return header != nullptr ? header->sectionSize(ColumnOf(view_, column)) : QVariant();
  }

  Q_INVOKABLE void choose(const QVariant& item, const QString& keys) {
    if (item.typeId() == QMetaType::QVariantList)
      ChooseAll(item.toList());
    else
      ClickItem(ItemOf(view_, item), {.modifiers = ReadModifiers(keys)});
  }
  Q_INVOKABLE void toggle(const QVariant& item) {
    ClickItem(ItemOf(view_, item), {.modifiers = TakesManyByClick() ? Qt::NoModifier : Qt::ControlModifier});
  }
  Q_INVOKABLE void doubleClick(const QVariant& item) {
    if (item.isValid())
      ClickItem(ItemOf(view_, item), {.twice = true});
    else
      WidgetControl::doubleClick({});
  }
  Q_INVOKABLE void clickCell(int row, const QVariant& column, const QString& keys) {
    ClickCell(row, column, {.modifiers = ReadModifiers(keys)});
  }
  Q_INVOKABLE void doubleClickCell(int row, const QVariant& column, const QString& keys) {
    ClickCell(row, column, {.modifiers = ReadModifiers(keys), .twice = true});
  }
  Q_INVOKABLE void rightClickCell(int row, const QVariant& column, const QString& keys) {
    ClickCell(row, column, {.button = Qt::RightButton, .modifiers = ReadModifiers(keys)});
  }
  Q_INVOKABLE void clickHeading(const QVariant& column) { ClickHeading(column, Qt::LeftButton); }
  Q_INVOKABLE void rightClickHeading(const QVariant& column) { ClickHeading(column, Qt::RightButton); }
  Q_INVOKABLE void selectRows(const QVariant& rows) {
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    for (const QVariant& row : ListOf(rows)) {
      (void)CellAt(view_, row.toInt(), 0);
      ClickItem(CellAt(view_, row.toInt(), PlainColumn(row.toInt())), {.modifiers = modifiers});
      modifiers = Qt::ControlModifier;
    }
  }
  Q_INVOKABLE void scrollToRow(int row) {
    view_.scrollTo(CellAt(view_, row, FirstColumn(view_)), QAbstractItemView::PositionAtTop);
    Settle();
  }
  Q_INVOKABLE void resizeColumn(const QVariant& column, int pixels) {
    if (HeaderOf(view_) == nullptr) DoesNotTake("resizeColumn");
    HeaderOf(view_)->resizeSection(ColumnOf(view_, column), pixels);
    Settle();
  }
  Q_INVOKABLE void moveColumn(const QVariant& column, int place) {
    QHeaderView* header = HeaderOf(view_);
    if (header == nullptr) DoesNotTake("moveColumn");
    header->moveSection(header->visualIndex(ColumnOf(view_, column)), place);
    Settle();
  }

 private:
  [[nodiscard]] bool TakesManyByClick() const { return view_.selectionMode() == QAbstractItemView::MultiSelection; }
  [[nodiscard]] QVariant Texts(bool onlySelected) const {
    QStringList texts;
    for (const QModelIndex& item : AllItems(view_)) {
      if (!onlySelected || view_.selectionModel()->isSelected(item)) texts += PlainLines(item.data().toString());
    }
    return texts;
  }
  /// The captions, in the order of the columns on the screen.
  [[nodiscard]] QStringList Columns(bool hidden) const {
    const QStringList captions = ColumnCaptions(view_);
    const QHeaderView* header = HeaderOf(view_);
    QStringList columns;
    for (int place = 0; place < captions.size(); ++place) {
      const int column = header != nullptr ? header->logicalIndex(place) : place;
      if (column >= 0 && ColumnHidden(view_, column) == hidden) columns += captions.value(column);
    }
    return columns;
  }
  /// A column whose cells do nothing on a click.
  [[nodiscard]] int PlainColumn(int row) const {
    const QHeaderView* header = HeaderOf(view_);
    for (int place = 0; header != nullptr && place < header->count(); ++place) {
      const int column = header->logicalIndex(place);
      const QString text = Shown(CellAt(view_, row, column)).toString();
      const bool flag = text == QLatin1String("Yes") || text == QLatin1String("No");
      if (!header->isSectionHidden(column) && !flag) return column;
    }
    return 0;
  }
  void ClickItem(const QModelIndex& item, const Click& click) {
    MakeUsable(view_, Name());
    view_.scrollTo(item);
    Settle();
    const QRect place = view_.visualRect(item).intersected(view_.viewport()->rect());
    if (place.isEmpty())
      throw ScenarioError(QStringLiteral("\"%1\" of %2 cannot be seen.").arg(item.data().toString(), Name()));
    ClickAt(*view_.viewport(), place.center(), Name(), click);
  }
  void ClickCell(int row, const QVariant& column, const Click& click) {
    const QModelIndex cell = CellAt(view_, row, column);
    if (ColumnHidden(view_, cell.column()))
      throw ScenarioError(QStringLiteral("Column \"%1\" of %2 is hidden.").arg(column.toString(), Name()));
    ClickItem(cell, click);
  }
  void ClickHeading(const QVariant& column, Qt::MouseButton button) {
    QHeaderView* header = HeaderOf(view_);
    if (header == nullptr || !header->isVisible())
      throw ScenarioError(QStringLiteral("%1 has no headings.").arg(Name()));
    const int section = ColumnOf(view_, column);
    if (header->isSectionHidden(section))
      throw ScenarioError(QStringLiteral("Column \"%1\" of %2 is hidden.").arg(column.toString(), Name()));
    MakeUsable(view_, Name());
    if (rowCount().toInt() > 0) {
      const int top = view_.indexAt(QPoint(1, 1)).row();
      view_.scrollTo(view_.model()->index(std::max(0, top), section, view_.rootIndex()));
    }
    const QPoint place(header->sectionViewportPosition(section) + header->sectionSize(section) / 2,
                       header->viewport()->height() / 2);
    ClickAt(*header->viewport(), place, Name(), {.button = button});
  }
  // Selects exactly these items, by clicks.
  void ChooseAll(const QVariantList& wanted) {
    QList<QPersistentModelIndex> items;
    for (const QVariant& item : wanted)
      items += QPersistentModelIndex(ItemOf(view_, item));
    if (TakesManyByClick()) {
      for (const QModelIndex& item : AllItems(view_)) {
        if (view_.selectionModel()->isSelected(item) != items.contains(QPersistentModelIndex(item)))
          ClickItem(item, {});
      }
      return;
    }
    for (qsizetype i = 0; i < items.size(); ++i)
      ClickItem(items[i], {.modifiers = i == 0 ? Qt::NoModifier : Qt::ControlModifier});
  }

  QAbstractItemView& view_;
};

}  // namespace qbx::scenario
