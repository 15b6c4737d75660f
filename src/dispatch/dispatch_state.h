// What all sending shares.

#pragma once

namespace qbx {

/// Process-wide state of sending; one, owned by the Application.
struct DispatchState {
  double SMSCreditsRemaining = 0;  ///< the gateway account's balance as last reported
  bool StopSending = false;  ///< set by pausing and by cancelling queued e-mails; a run stops after its current row
};

}  // namespace qbx
