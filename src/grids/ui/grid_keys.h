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

/// What the user does to a grid with keys, mouse and menu. The comments of `cDataGrid` hold here, too.
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
  /// Forgets the text that was typed to find a row.
  void StopFinding();
  [[nodiscard]] bool bFinding() const { return finding_; }
  void bFinding(bool on) { finding_ = on; }

  // Called while the click on a flag is answered.
  /// The clicked flag was changed. Shows its new tick before the rows are read again, because reading many rows takes a
  /// moment.
  void ShowClickedFlag();
  /// The flag was flipped but the rows could not be read: keeps showing the new tick, so that the user does not flip it
  /// back.
  void KeepClickedFlag();

  // Events of the view.
  /// \return whether the key was handled, so that the control must not get it
  bool KeyPress(const QKeyEvent& event);
  void KeyUp(const QKeyEvent& event);
  void MouseDown(const QMouseEvent& event);
  void MouseUp(const QMouseEvent& event);
  void MouseMove(const QMouseEvent& event);
  void MouseLeave() { mouseColumn_.clear(); }
  /// A grid that gets the focus by the keyboard has a current cell.
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
  QPointer<QMenu> menu_;  // the menu that was opened last
  QString mouseColumn_;
  bool colSorting_ = true;
  bool finding_ = false;
  bool ignoreKeyPress_ = false;
  Qt::KeyboardModifiers clickModifiers_;
  bool secondClick_ = false;  // whether the next click is the second of a double-click
  QPoint clickedAt_;
  QPersistentModelIndex clickedFlag_;  // the flag whose click is being handled
  int controlKey_ = 0;                 // Delete or Insert when it was pressed with Ctrl, else 0
};

}  // namespace qbx
