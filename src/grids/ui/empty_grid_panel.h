// The panel over a grid without rows.

#pragma once

#include <QColor>
#include <QPointer>
#include <QString>

class QFrame;
class QLabel;
class QTableView;

namespace qbx {

/// A frame with a centred label, as large as the grid and beside it in its window. Both are named after the grid
/// ("dbgDataFrame", "dbgDataLabel").
class EmptyGridPanel {
 public:
  explicit EmptyGridPanel(QTableView& grid) : grid_(&grid) {}
  ~EmptyGridPanel();

  void Show(const QString& text, const QColor& background, const QColor& foreground);
  void Hide();
  /// Moves the panel to the grid's place.
  void Place();

 private:
  void Make();

  QPointer<QTableView> grid_;
  QPointer<QFrame> frame_;
  QPointer<QLabel> label_;
};

}  // namespace qbx
