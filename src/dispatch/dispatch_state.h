// The state that all sending shares.

#pragma once

namespace qbx {

/// The state of sending. There is one, owned by the Application.
struct DispatchState {
  double SMSCreditsRemaining = 0;  ///< the balance of the gateway account as last reported
  bool StopSending = false;  ///< set by pausing and by cancelling queued e-mails; a run stops after its current row
};

}  // namespace qbx
