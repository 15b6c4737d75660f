// Filling a list of text columns.

#pragma once

#include <QString>
#include <QStringList>
#include <QVariantList>

class QTreeWidget;
class QTreeWidgetItem;

namespace qbx {

/// Prepares a list: rows are single lines, a cell that is cut shows its text as a tip, and headings sort once they are clicked; until
/// then rows stand in the order they were added.
void PrepareList(QTreeWidget& list);

/// While it lives the list can be filled without being sorted or saying that its selection changed. It starts empty.
class ListFilling {
 public:
  explicit ListFilling(QTreeWidget& list);
  ~ListFilling();
  ListFilling(const ListFilling&) = delete;
  ListFilling& operator=(const ListFilling&) = delete;

  /// Adds a row.
  /// \param cells  numbers, dates with their time, and texts; a column sorts by them. A cell shows its text on one line, and a long one cut; see `WholeText`.
  QTreeWidgetItem* Add(const QVariantList& cells);

 private:
  QTreeWidget& list_;
};

/// The text that a cell was given.
[[nodiscard]] QString WholeText(const QTreeWidgetItem& row, int column);

/// Makes columns as wide as sample texts, in the font of the list.
void SetColumnWidths(QTreeWidget& list, const QStringList& samples);

}  // namespace qbx
