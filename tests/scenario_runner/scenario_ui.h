// The user interface of the program in a scenario.

#pragma once

#include <QObject>
#include <QStringList>
#include <functional>

#include "platform/ui/widget_ui.h"
#include "support/fixed_clock.h"

namespace qbx::scenario {

/// The real one, with these differences: the scenario can act while the program works, the texts of the status box are
/// kept, and waits take no time.
class ScenarioUi final : public WidgetUi {
 public:
  /// \param meanwhile  called among the events that the program lets run, at most once per pump and never inside itself
  ScenarioUi(qbx::test::FixedClock& clock, std::function<void()> meanwhile)
      : clock_(clock), meanwhile_(std::move(meanwhile)) {}

  void ShowStatusBox(const StatusView& view) override;
  void CloseStatusBox() override;
  void SetBusy(bool busy) override;
  void PumpEvents() override;
  /// Pumps once. Only waits when pauses are real.
  void Pause(int milliseconds) override;
  /// Also advances the clock, because the awaited condition may read it.
  void Wait(int milliseconds) override;

  void UseRealPauses(bool on) { realPauses_ = on; }
  [[nodiscard]] const QStringList& StatusTexts() const { return statusTexts_; }
  void ClearStatusTexts() { statusTexts_.clear(); }
  [[nodiscard]] bool StatusVisible() const { return statusVisible_; }
  [[nodiscard]] bool Busy() const { return busy_; }

 private:
  void Schedule();

  qbx::test::FixedClock& clock_;
  std::function<void()> meanwhile_;
  QStringList statusTexts_;
  bool statusVisible_ = false;
  bool busy_ = false;
  bool realPauses_ = false;
  bool scheduled_ = false;
  bool acting_ = false;
  QObject timerOwner_;  // owns the timers, which must end before the rest
};

}  // namespace qbx::scenario
