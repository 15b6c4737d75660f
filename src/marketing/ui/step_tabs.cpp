#include "marketing/ui/step_tabs.h"

#include <QSize>
#include <QTabBar>
#include <QWidget>

namespace qbx {
namespace {

constexpr int kLettersKept = 24;

class StepTabBar : public QTabBar {
 protected:
  [[nodiscard]] QSize minimumTabSizeHint(int index) const override {
    const QSize whole = tabSizeHint(index);
    const int least = kLettersKept * fontMetrics().averageCharWidth();
    return {std::min(whole.width(), least), whole.height()};
  }
};

}  // namespace

StepTabs::StepTabs(QWidget* parent) : QTabWidget(parent) {
  setTabBar(new StepTabBar);
  setUsesScrollButtons(false);
  setElideMode(Qt::ElideRight);
}

}  // namespace qbx
