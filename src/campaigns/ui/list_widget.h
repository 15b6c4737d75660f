// Filling a list of text columns.

#pragma once

#include <QString>
#include <QStringList>
#include <QVariantList>

class QTreeWidget;
class QTreeWidgetItem;

namespace qbx {

/// Prepares a list: rows have one line, a cell that is cut shows its text as a tip, and a click on a heading sorts.
/// Until then rows keep the order in which they were added.
void PrepareList(QTreeWidget& list);

/// While it lives the list can be filled without sorting and without signals about its selection. It empties the list
/// first.
class ListFilling {
 public:
  explicit ListFilling(QTreeWidget& list);
  ~ListFilling();
  ListFilling(const ListFilling&) = delete;
  ListFilling& operator=(const ListFilling&) = delete;

  /// Adds a row.
  /// \param cells  numbers, dates with their time, and texts; a column is sorted by them. A cell shows its text on one
  ///               line, cut when it is long; see `WholeText`.
  QTreeWidgetItem* Add(const QVariantList& cells);

 private:
  QTreeWidget& list_;
};

/// The uncut text of a cell.
[[nodiscard]] QString WholeText(const QTreeWidgetItem& row, int column);

/// Makes columns as wide as sample texts in the list's font.
void SetColumnWidths(QTreeWidget& list, const QStringList& samples);

}  // namespace qbx
