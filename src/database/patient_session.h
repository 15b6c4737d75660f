// Sessions that let the window live while the server takes its time.

#pragma once

#include <functional>

#include "database/connection.h"

namespace qbx {

/// Wraps the sessions that a factory makes. A call from the thread that made the session runs on a thread of its own as soon as it is not
/// answered at once; meanwhile `pump` is called over and over, so that windows repaint. To the caller it stays synchronous. Calls from any
/// other thread (the work of `Connection::RunLong`) go straight through.
/// \param pump  lets events run; must not use the session, and must outlive the sessions
[[nodiscard]] SessionFactory PatientSessions(SessionFactory factory, std::function<void()> pump);

}  // namespace qbx
