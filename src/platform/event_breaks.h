// Long work on the windows' thread.

#pragma once

#include <QElapsedTimer>

#include "platform/user_interface.h"

namespace qbx {

/// Lets events run from time to time, so that no window freezes:
///
///   EventBreaks breaks(ui);
///   for (each of many rows) { ...; breaks.MayPause(); }
class EventBreaks {
 public:
  explicit EventBreaks(UserInterface& ui) : ui_(ui) { last_.start(); }

  void MayPause() {
    if (last_.elapsed() < kWorkAtOnce) return;
    ui_.PumpEvents();
    last_.start();
  }

 private:
  static constexpr int kWorkAtOnce = 20;  // milliseconds

  UserInterface& ui_;
  QElapsedTimer last_;
};

}  // namespace qbx
