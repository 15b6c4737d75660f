// How every window of the program looks.

#pragma once

#include <QPalette>

namespace qbx {

/// Sets the style and the style sheet of the whole application. Colours come from the palette, so a dark one works, made readable where they
/// are too faint. A wheel that is turned
/// over a list box or a number box which does not have the focus scrolls the page and leaves the value alone.
void ApplyLook();

/// The parts of a palette that are made readable: the highlight behind its text, and the text of boxes that are empty.
[[nodiscard]] QPalette ReadableParts(const QPalette& palette);

}  // namespace qbx
