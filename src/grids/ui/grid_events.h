// The events of a grid's table view.

#pragma once

#include <QEvent>
#include <QKeyEvent>
#include <QObject>

class QTableView;

namespace qbx {

class GridKeys;
class GridLook;

/// Watches a table view and its viewport and passes their events to the parts of the grid.
class GridEvents final : public QObject {
 public:
  GridEvents(GridKeys& keys, GridLook& look, QTableView& view);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool ViewEvent(QEvent& event);
  void ViewportEvent(QEvent& event);
  static bool IsOurs(const QKeyEvent& event);

  GridKeys& keys_;
  GridLook& look_;
  QTableView& view_;
};

}  // namespace qbx
