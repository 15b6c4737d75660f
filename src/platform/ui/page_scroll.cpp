#include "platform/ui/page_scroll.h"

#include <QApplication>
#include <QEvent>
#include <QFrame>
#include <QGuiApplication>
#include <QLayout>
#include <QResizeEvent>
#include <QScrollBar>
#include <QSize>
#include <QWidget>

namespace qbx {
namespace {

constexpr QSize kSmallest(120, 80);

}  // namespace

PageScroll::PageScroll(QWidget* parent) : QScrollArea(parent) {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  viewport()->setAutoFillBackground(false);
  connect(qApp, &QApplication::focusChanged, this, &PageScroll::ShowFocus);
}

/// The focus moves while the page is destroyed, when this object is only its base class.
PageScroll::~PageScroll() {
  disconnect(qApp, nullptr, this, nullptr);
}

QSize PageScroll::minimumSizeHint() const {
  return kSmallest;
}

bool PageScroll::event(QEvent* event) {
  const bool done = QScrollArea::event(event);
  if (event->type() == QEvent::LayoutRequest) Fit();
  return done;
}

void PageScroll::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  Fit();
}

// Qt's own fitting uses the preferred height of a page with wrapped labels as its least height.
void PageScroll::Fit() {
  if (widget() == nullptr || widget()->layout() == nullptr) return;
  widget()->setAutoFillBackground(false);
  const QLayout& layout = *widget()->layout();
  const QSize smallest = layout.totalMinimumSize();
  QSize room = maximumViewportSize();
  const auto heightAt = [&](int width) {
    return layout.hasHeightForWidth() ? layout.totalMinimumHeightForWidth(width) : smallest.height();
  };
  int width = std::max(room.width(), smallest.width());
  if (heightAt(width) > room.height())
    width = std::max(room.width() - verticalScrollBar()->sizeHint().width(), smallest.width());
  if (width > room.width()) room.rheight() -= horizontalScrollBar()->sizeHint().height();
  const QSize size(width, std::max(heightAt(width), room.height()));
  if (size == widget()->size()) return;
  widget()->resize(size);
  ShowFocus();
}

/// Does nothing while a mouse button is down: the pressed widget must not move.
void PageScroll::ShowFocus() {
  QWidget* focus = QApplication::focusWidget();
  const bool mine = widget() != nullptr && focus != nullptr && widget()->isAncestorOf(focus);
  if (mine && QGuiApplication::mouseButtons() == Qt::NoButton) ensureWidgetVisible(focus);
}

}  // namespace qbx
