// The hint line of a step.

#pragma once

#include <QLabel>

namespace qbx {

/// Draws an information icon into the blanks that its text begins with.
class HintLabel : public QLabel {
 public:
  using QLabel::QLabel;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace qbx
