// Lists, trees and grids: finds items and their places.

#pragma once

#include <QAbstractItemView>
#include <QModelIndex>
#include <QStringList>

#include "bridge.h"

class QHeaderView;

namespace qbx::scenario {

/// The column headings' widget; null for a plain list.
[[nodiscard]] QHeaderView* HeaderOf(const QAbstractItemView& view);
/// Captions of all columns, hidden ones included, in the order of the model.
[[nodiscard]] QStringList ColumnCaptions(const QAbstractItemView& view);
/// A column by caption, by field ("_" means a blank) or by number from 0. \throws ScenarioError with the existing
/// captions
[[nodiscard]] int ColumnOf(const QAbstractItemView& view, const QVariant& column);
/// The first visible column: a row is clicked there, and has its name there.
[[nodiscard]] int FirstColumn(const QAbstractItemView& view);
/// \throws ScenarioError when there is no such row
[[nodiscard]] QModelIndex CellAt(const QAbstractItemView& view, int row, const QVariant& column);
/// All items in the order shown, each one followed by its sub-items.
[[nodiscard]] QList<QModelIndex> AllItems(const QAbstractItemView& view);
/// An item by the text of any column, by key (a stored text that is not shown), or by number: from 0, in a tree from 1
/// in the order shown.
/// \throws ScenarioError with the existing texts
[[nodiscard]] QModelIndex ItemOf(const QAbstractItemView& view, const QVariant& item);
/// The key of an item: a stored text that is not shown.
[[nodiscard]] QVariant KeyOf(const QModelIndex& item);
[[nodiscard]] bool IsTree(const QAbstractItemView& view);
[[nodiscard]] bool ColumnHidden(const QAbstractItemView& view, int column);
/// The content of a cell: true or false for a tick mark, otherwise the text.
[[nodiscard]] QVariant Shown(const QModelIndex& cell);

}  // namespace qbx::scenario
