// Keys, the mouse and finding in a grid.

#pragma once

#include <QObject>
#include <QPersistentModelIndex>
#include <QPoint>
#include <QPointer>
#include <QString>
#include <functional>
#include <memory>

#include "grids/ui/grid_core.h"
#include "grids/ui/grid_finder.h"
#include "grids/ui/grid_look.h"
#include "grids/ui/grid_place.h"
#include "grids/ui/grid_rows.h"

class QKeyEvent;
class QMenu;
class QModelIndex;
class QMouseEvent;

namespace qbx {

/// What a user does to a grid with keys, mouse and menu; what `cDataGrid` says of it holds here.
class GridKeys : public QObject {
  Q_OBJECT
 public:
  struct Parts {
    GridCore& core;
    GridPlace& place;
    GridRows& rows;
    GridLook& look;
    std::function<void(const QString& sort)> sortBy;
  };
  explicit GridKeys(Parts parts);
  ~GridKeys() override;

  /// The view has its model now.
  void Attach();

  [[nodiscard]] bool bColSorting() const { return colSorting_; }
  void bColSorting(bool on);
  [[nodiscard]] QString sMouseGridColumn() const { return mouseColumn_; }
  void IgnoreKeyPress() { ignoreKeyPress_ = true; }
  /// What was typed to find is forgotten.
  void StopFinding();
  [[nodiscard]] bool bFinding() const { return finding_; }
  void bFinding(bool on) { finding_ = on; }

  // Called while the click on a flag is answered.
  /// Rows that are read again were changed by it. Reading many takes a moment, which the user need not wait for to see
  /// the tick change.
  void ShowClickedFlag();
  /// The flag was flipped, but the rows could not be read: what is shown must not invite to flip it back.
  void KeepClickedFlag();

  // Events of the view.
  /// \return whether the key was handled and the control must not see it
  bool KeyPress(const QKeyEvent& event);
  void KeyUp(const QKeyEvent& event);
  void MouseDown(const QMouseEvent& event);
  void MouseUp(const QMouseEvent& event);
  void MouseMove(const QMouseEvent& event);
  void MouseLeave() { mouseColumn_.clear(); }
  /// A grid that is entered by the keyboard has a current cell at once.
  void GotFocus();

 Q_SIGNALS:
  void CellClicked(const QString& field, qint64 recordId);
  void EditButtonClicked(const QString& field, qint64 recordId);
  void FindWanted();
  void RowColChanged();

 private:
  void HeadClick(int column);
  void RowColChange(const QModelIndex& current, const QModelIndex& previous);
  bool Shortcut(const QKeyEvent& event);
  bool FindTyped(const QKeyEvent& event);
  void Find(const QString& start);
  enum class ClickedBy { kMouse, kKey };
  void ClickCell(const QModelIndex& index, ClickedBy by);
  void Menu(const QPoint& position);
  void ColumnsMenu(const QPoint& position);

  GridCore& core_;
  GridPlace& place_;
  GridRows& rows_;
  GridLook& look_;
  std::function<void(const QString&)> sortBy_;
  std::unique_ptr<GridFinder> finder_;
  QPointer<QMenu> menu_;  // the last one that was opened
  QString mouseColumn_;
  bool colSorting_ = true;
  bool finding_ = false;
  bool ignoreKeyPress_ = false;
  Qt::KeyboardModifiers clickModifiers_;
  bool secondClick_ = false;  // of a double-click
  QPoint clickedAt_;
  QPersistentModelIndex clickedFlag_;  // while its click is answered
  int controlKey_ = 0;                 // Delete or Insert went down with Ctrl
};

}  // namespace qbx
