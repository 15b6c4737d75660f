#include "grids/ui/grid_events.h"

#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTableView>

#include "grids/ui/grid_keys.h"
#include "grids/ui/grid_look.h"

namespace qbx {

GridEvents::GridEvents(GridKeys& keys, GridLook& look, QTableView& view) : keys_(keys), look_(look), view_(view) {
  view.installEventFilter(this);
  view.viewport()->installEventFilter(this);
  view.viewport()->setMouseTracking(true);
}

bool GridEvents::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &view_) return ViewEvent(*event);
  ViewportEvent(*event);
  return false;
}

/// Whether the grid takes a key before the shortcuts of the window do.
bool GridEvents::IsOurs(const QKeyEvent& event) {
  const bool control = (event.modifiers() & Qt::ControlModifier) != 0;
  switch (event.key()) {
    case Qt::Key_A:
    case Qt::Key_C:
    case Qt::Key_F:
    case Qt::Key_Delete:
    case Qt::Key_Insert:
      return control;
    default:
      return event.modifiers() == Qt::NoModifier && !event.text().isEmpty() && event.text().front().isPrint();
  }
}

bool GridEvents::ViewEvent(QEvent& event) {
  switch (event.type()) {
    case QEvent::ShortcutOverride:
      if (!IsOurs(static_cast<QKeyEvent&>(event))) return false;
      event.accept();
      return true;
    case QEvent::KeyPress:
      return keys_.KeyPress(static_cast<QKeyEvent&>(event));
    case QEvent::KeyRelease:
      keys_.KeyUp(static_cast<QKeyEvent&>(event));
      return false;
    case QEvent::FocusIn:
      keys_.GotFocus();
      return false;
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::ShowToParent:
    case QEvent::HideToParent:
      look_.Resize();
      return false;
    case QEvent::PaletteChange:
    case QEvent::StyleChange:
    case QEvent::ApplicationFontChange:
      look_.ApplyStyles();
      return false;
    default:
      return false;
  }
}

void GridEvents::ViewportEvent(QEvent& event) {
  switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      keys_.MouseDown(static_cast<QMouseEvent&>(event));
      break;
    case QEvent::MouseButtonRelease:
      keys_.MouseUp(static_cast<QMouseEvent&>(event));
      break;
    case QEvent::MouseMove:
      keys_.MouseMove(static_cast<QMouseEvent&>(event));
      break;
    case QEvent::Leave:
      keys_.MouseLeave();
      break;
    default:
      break;
  }
}

}  // namespace qbx
