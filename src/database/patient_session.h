// Sessions that keep the windows alive while the server works.

#pragma once

#include <functional>

#include "database/connection.h"

namespace qbx {

/// Wraps the sessions that a factory makes. A call from the thread that made the session runs on a helper thread. When
/// the answer takes longer, `pump` is called again and again, so that windows repaint. The call still returns only with
/// its result. Calls from any other thread (the work of `Connection::RunLong`) are made directly.
/// \param pump  lets events run; must not use the session, and must outlive the sessions
[[nodiscard]] SessionFactory PatientSessions(SessionFactory factory, std::function<void()> pump);

}  // namespace qbx
