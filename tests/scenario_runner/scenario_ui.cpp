#include "scenario_ui.h"

#include <QTimer>

namespace qbx::scenario {

void ScenarioUi::ShowStatusBox(const StatusView& view) {
  statusTexts_ += view.message;
  statusVisible_ = true;
  WidgetUi::ShowStatusBox(view);
}

void ScenarioUi::CloseStatusBox() {
  statusVisible_ = false;
  WidgetUi::CloseStatusBox();
}

void ScenarioUi::SetBusy(bool busy) {
  busy_ = busy;
  WidgetUi::SetBusy(busy);
}

void ScenarioUi::PumpEvents() {
  Schedule();
  WidgetUi::PumpEvents();
}

void ScenarioUi::Pause(int milliseconds) {
  if (!realPauses_) {
    PumpEvents();
    return;
  }
  Schedule();
  WidgetUi::Pause(milliseconds);
}

void ScenarioUi::Wait(int milliseconds) {
  Pause(milliseconds);
  clock_.Set(clock_.Now().addMSecs(milliseconds));
}

// Uses a timer, so that the scenario acts among the events, like a person's clicks. Then the program's own rules for
// events apply.
void ScenarioUi::Schedule() {
  if (scheduled_ || acting_) return;
  scheduled_ = true;
  QTimer::singleShot(0, &timerOwner_, [this] {
    scheduled_ = false;
    acting_ = true;
    meanwhile_();
    acting_ = false;
  });
}

}  // namespace qbx::scenario
