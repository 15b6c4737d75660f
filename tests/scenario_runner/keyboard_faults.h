// Checks that a window can be used with the keyboard alone, and with a screen reader.

#pragma once

#include <QStringList>

class QWidget;

namespace qbx::scenario {

/// Goes through a window with Tab, from the focus until it returns there.
/// \return a sentence for each fault, see tests/scenarios/README.md
[[nodiscard]] QStringList KeyboardFaults(QWidget& window);

}  // namespace qbx::scenario
