// The hint line of a step.

#pragma once

#include <QLabel>
#include <QPaintEvent>

namespace qbx {

/// Draws an information icon over the blanks at the start of its text.
class HintLabel : public QLabel {
 public:
  using QLabel::QLabel;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace qbx
