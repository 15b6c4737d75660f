// The events of a table view, handed to the grid that wraps it.

#pragma once

#include <QObject>

class QTableView;

namespace qbx {

class cDataGrid;

/// Watches a table view and its viewport.
class GridEvents final : public QObject {
 public:
  GridEvents(cDataGrid& grid, QTableView& view);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool ViewEvent(QEvent& event);
  void ViewportEvent(QEvent& event);
  static bool IsOurs(const QKeyEvent& event);

  cDataGrid& grid_;
  QTableView& view_;
};

}  // namespace qbx
