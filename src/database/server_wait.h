// How the user waits for a server that does not answer.

#pragma once

#include <QElapsedTimer>
#include <chrono>
#include <functional>
#include <optional>

#include "diagnostics/diagnostics.h"
#include "diagnostics/wait_box.h"

namespace qbx {

/// Whether the user may cancel what the server is asked.
enum class MayCancel {
  kNo,
  kYes,
  kAsAround,  ///< as the wait around this one; no, when there is none
};

/// Waits for some time, letting events run; 0: only lets events run.
/// \return whether to go on; false when the user does not want to wait and may cancel
using WaitForServer = std::function<bool(std::chrono::milliseconds time)>;

/// Begins a wait, which ends when its result is destroyed.
using BeginWaiting = std::function<WaitForServer(MayCancel mayCancel)>;

/// The status box "Waiting for the database...". It opens when a wait has lasted a second, later where the user may not
/// cancel. It has a Cancel button where the user may cancel, and closes at the end of the wait. A wait may begin inside
/// another one and then has the same box, so that the box does not flicker between several calls. Only the thread of
/// the user interface waits.
class ServerWait {
 public:
  explicit ServerWait(const Diagnostics& diagnostics) : diagnostics_(diagnostics) {}

  [[nodiscard]] WaitForServer Begin(MayCancel mayCancel);
  /// Shows a message about a failure, while no wait runs. The time in which the user reads it does not count: Cancel
  /// still holds afterwards for what the cancelled command asks next.
  void TellOfFailure(const std::function<void()>& show);
  /// How often a wait was told that the user cancelled. For work of many calls, which ends when it has grown.
  [[nodiscard]] int Cancellations() const { return cancellations_; }

 private:
  class Stretch;

  [[nodiscard]] bool CancelHolds() const;

  Diagnostics diagnostics_;
  Stretch* innermost_ = nullptr;
  int cancellations_ = 0;
  std::optional<WaitBox> box_;    // of the outermost
  QElapsedTimer sinceCancelled_;  // since the end of a cancelled wait
};

}  // namespace qbx
