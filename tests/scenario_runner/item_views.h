// Lists, trees and grids: which item is meant, and where it is.

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
/// A column by caption, by field ("_" stands for a blank) or by number from 0. \throws ScenarioError with the captions
/// that are there
[[nodiscard]] int ColumnOf(const QAbstractItemView& view, const QVariant& column);
/// Where a row is clicked and what it is called: the first column that is shown.
[[nodiscard]] int FirstColumn(const QAbstractItemView& view);
/// \throws ScenarioError when there is no such row
[[nodiscard]] QModelIndex CellAt(const QAbstractItemView& view, int row, const QVariant& column);
/// Every item in the order shown, with those below it behind it.
[[nodiscard]] QList<QModelIndex> AllItems(const QAbstractItemView& view);
/// An item by the text of any of its columns, by key (a text that it keeps beside the shown one) or by number: from 0,
/// in a tree from 1 in the order shown.
/// \throws ScenarioError with the texts that are there
[[nodiscard]] QModelIndex ItemOf(const QAbstractItemView& view, const QVariant& item);
/// The text that an item keeps beside the shown one.
[[nodiscard]] QVariant KeyOf(const QModelIndex& item);
[[nodiscard]] bool IsTree(const QAbstractItemView& view);
[[nodiscard]] bool ColumnHidden(const QAbstractItemView& view, int column);
/// What the cell shows: true or false for a tick mark, else the text.
[[nodiscard]] QVariant Shown(const QModelIndex& cell);

}  // namespace qbx::scenario
