#include "marketing/ui/hint_label.h"

#include <QPaintEvent>
#include <QPainter>
#include <QRect>

#include "platform/ui/drawn_icon.h"

namespace qbx {

void HintLabel::paintEvent(QPaintEvent* event) {
  QLabel::paintEvent(event);
  constexpr int kIconSide = 16;
  QPainter painter(this);
  DrawnIcon(Drawing::kInformation).paint(&painter, QRect(0, (height() - kIconSide) / 2, kIconSide, kIconSide));
}

}  // namespace qbx
