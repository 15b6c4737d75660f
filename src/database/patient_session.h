// Sessions that keep the windows alive while the server works.

#pragma once

#include "database/connection.h"

namespace qbx {

/// Wraps the sessions that a factory makes. A call from the thread that made the session runs on a helper thread, and
/// so does reading a whole result. When the answer takes longer, a wait begins, which lets events run again and again,
/// so that windows repaint. Calls from any other thread (the work of `Connection::RunLong`) are made directly.
///
/// When the wait ends because the user cancels, connecting is left to itself, and any other call is interrupted. When
/// the server does not even answer to that, the call is left to itself, and the session is lost. Both fail as a lost
/// connection ("Operation cancelled by user"). The call ends by its time limit; the factory's destructor waits for it.
/// \param begin  must not use the session, and must outlive the sessions
[[nodiscard]] SessionFactory PatientSessions(SessionFactory factory, BeginWaiting begin);

}  // namespace qbx
