#include "settings/ui/window_layout.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QPoint>
#include <QRect>
#include <QScreen>
#include <QSize>
#include <QWidget>
#include <algorithm>

namespace qbx {
namespace {

constexpr int kTwipsPerPixel = 15;

const QScreen* ScreenAt(const QPoint& point) {
  const QScreen* screen = QGuiApplication::screenAt(point);
  return screen != nullptr ? screen : QGuiApplication::primaryScreen();
}

/// The position, moved and cut so that all of it lies on one screen: the one that holds its centre, otherwise the
/// first. As Qt takes them, the corner is that of the frame and the size is without the frame, so the window neither
/// moves nor grows from run to run.
QRect OntoScreen(const QRect& wanted) {
  const QScreen* screen = ScreenAt(wanted.center());
  if (screen == nullptr) return wanted;
  const QRect room = screen->availableGeometry();
  QRect placed(wanted.topLeft(), wanted.size().boundedTo(room.size()));
  placed.moveLeft(std::clamp(placed.left(), room.left(), room.right() - placed.width() + 1));
  placed.moveTop(std::clamp(placed.top(), room.top(), room.bottom() - placed.height() + 1));
  return placed;
}

}  // namespace

void WindowLayout::RestoreWindow(QWidget& window, const QString& form) {
  // On a small screen, or at a large scale, the screen's size limits the window's minimum size.
  if (const QScreen* screen = ScreenAt({})) {
    const QSize room = screen->availableSize();
    window.setMinimumSize(window.minimumSize().boundedTo(room));
    window.resize(window.size().boundedTo(room));
  }
  const std::optional<WindowPosition> stored = registry_.LoadWindowPosition(form);
  if (!stored || stored->width <= 0) return;
  const QRect wanted(stored->left / kTwipsPerPixel, stored->top / kTwipsPerPixel, stored->width / kTwipsPerPixel,
                     stored->height / kTwipsPerPixel);
  const QRect placed = OntoScreen(QRect(wanted.topLeft(), wanted.size().expandedTo(window.minimumSize())));
  window.resize(placed.size());
  window.move(placed.topLeft());
}

void WindowLayout::SaveWindow(const QWidget& window, const QString& form) {
  const WindowPosition position{.top = window.y() * kTwipsPerPixel,
                                .left = window.x() * kTwipsPerPixel,
                                .width = window.width() * kTwipsPerPixel,
                                .height = window.height() * kTwipsPerPixel};
  registry_.SaveWindowPosition(form, position, window.isMinimized() || window.isMaximized() || window.isFullScreen());
}

void WindowLayout::RestoreColumns(QHeaderView& header, const QString& list) {
  const auto stored = registry_.sysLoadListViewPos(list, header.count());
  if (!stored) return;
  std::vector<int> order(stored->size());
  for (size_t column = 0; column < stored->size(); ++column) {
    const auto place = static_cast<size_t>((*stored)[column].position);
    if (place < order.size()) order[place] = static_cast<int>(column);
  }
  for (int place = 0; place < header.count(); ++place) {
    header.moveSection(header.visualIndex(order[static_cast<size_t>(place)]), place);
  }
  for (int column = 0; column < header.count(); ++column) {
    const int width = (*stored)[static_cast<size_t>(column)].width;
    if (width > 0) header.resizeSection(column, width);
  }
}

void WindowLayout::SaveColumns(const QHeaderView& header, const QString& list) {
  std::vector<ListViewColumn> columns;
  columns.reserve(static_cast<size_t>(header.count()));
  for (int column = 0; column < header.count(); ++column) {
    columns.push_back({.position = header.visualIndex(column), .width = header.sectionSize(column)});
  }
  registry_.sysSaveListViewPos(list, columns);
}

}  // namespace qbx
