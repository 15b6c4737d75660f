#include "platform/ui/page_scroll.h"

#include <QtWidgets>

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

/// The focus moves on while the page is taken apart, when this is no more than its base.
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

// Qt's own fitting takes the preferred height of a page with wrapped labels for its smallest.
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

/// Not while a button of the mouse is down: what is pressed must not move away.
void PageScroll::ShowFocus() {
  QWidget* focus = QApplication::focusWidget();
  const bool mine = widget() != nullptr && focus != nullptr && widget()->isAncestorOf(focus);
  if (mine && QGuiApplication::mouseButtons() == Qt::NoButton) ensureWidgetVisible(focus);
}

}  // namespace qbx
