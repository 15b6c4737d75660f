// Whether a window can be used by keyboard alone, and by somebody who hears it.

#pragma once

#include <QStringList>

class QWidget;

namespace qbx::scenario {

/// Walks round a window with Tab, from what has the focus until it comes back. \return a sentence for each fault, see
/// tests/scenarios/README.md
[[nodiscard]] QStringList KeyboardFaults(QWidget& window);

}  // namespace qbx::scenario
