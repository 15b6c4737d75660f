// The tabs of the five steps.

#pragma once

#include <QTabWidget>
#include <QWidget>

namespace qbx {

/// All tabs stay visible: in a narrow window the longest captions are shortened.
class StepTabs : public QTabWidget {
 public:
  explicit StepTabs(QWidget* parent = nullptr);
};

}  // namespace qbx
