// The find box over the results grid.

#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QObject>

#include "grids/ui/cDataGrid.h"

namespace qbx {

/// Goes to the next row with what is typed, while it is typed; Return and F3 go on, with Shift back, Esc goes back to the rows.
class ResultsFinder final : public QObject {
 public:
  /// \param found  says that nothing was found
  /// \param page   where F3 and Ctrl+F hold
  ResultsFinder(cDataGrid& grid, QLineEdit& box, QLabel& found, QWidget& page);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Find(cDataGrid::Search search);
  void FindAgain(cDataGrid::Search search);
  void GoToBox();

  cDataGrid& grid_;
  QLineEdit& box_;
  QLabel& found_;
};

}  // namespace qbx
