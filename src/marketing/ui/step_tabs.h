// The tabs of the five steps.

#pragma once

#include <QTabWidget>

namespace qbx {

/// All of them stay in sight: where the window is too narrow, the longest captions are shortened.
class StepTabs : public QTabWidget {
 public:
  explicit StepTabs(QWidget* parent = nullptr);
};

}  // namespace qbx
