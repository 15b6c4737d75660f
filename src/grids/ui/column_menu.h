// The menu in which the user shows, hides and fits the columns of a grid.

#pragma once

#include <QAction>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QWidget>

#include "grids/ui/grid_look.h"
#include "grids/ui/grid_place.h"

namespace qbx {

/// A tick for each column that the user may show. A click or Space on a tick leaves the menu open; Return closes it.
class ColumnMenu final : public QMenu {
 public:
  ColumnMenu(GridLook& look, GridPlace& place, QWidget& parent);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void AddColumns();
  void ShowLast();
  void Show(int column, bool show);

  GridLook& look_;
  GridPlace& place_;
  QAction* pressed_ = nullptr;
};

}  // namespace qbx
