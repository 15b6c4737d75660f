// The look of every window of the program.

#pragma once

#include <QPalette>

namespace qbx {

/// Sets the style and the style sheet of the whole application. Colours come from the palette, so a dark palette works;
/// faint ones are made readable. Turning the wheel over a list box or number box without focus scrolls the page and
/// does not change the value.
void ApplyLook();

/// A palette whose highlight and placeholder text are made readable.
[[nodiscard]] QPalette ReadableParts(const QPalette& palette);

}  // namespace qbx
