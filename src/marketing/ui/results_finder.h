// The find box above the results grid.

#pragma once

#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QObject>
#include <QWidget>

#include "grids/ui/cDataGrid.h"

namespace qbx {

/// Goes to the next row with the text while it is typed. Return and F3 go on, with Shift they go back, and Esc returns
/// to the rows.
class ResultsFinder final : public QObject {
 public:
  /// \param found  shows that nothing was found
  /// \param page   where F3 and Ctrl+F work
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
