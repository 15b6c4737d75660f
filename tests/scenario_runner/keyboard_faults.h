// Whether a window can be used by keyboard alone, and by somebody who hears it.

#pragma once

#include <QStringList>

class QWidget;

namespace qbx::scenario {

/// Walks round a window with the Tab key, from what has the focus until it comes back, and looks at everything that can be used at the moment.
/// \return what is wrong, a sentence each: a control that Tab does not reach, leave or take in reading order (within each frame along the rows, then
///         down); one without a name for a screen reader; a button, tick box or label of a control without a letter, and a letter given twice
[[nodiscard]] QStringList KeyboardFaults(QWidget& window);

}  // namespace qbx::scenario
