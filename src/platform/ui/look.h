// How every window of the program looks.

#pragma once

#include <QIcon>

namespace qbx {

/// The drawings of the program, lines in the text colour of the palette.
enum class Drawing { kLogo, kInformation, kCustomers, kVehicles, kCalendar, kNew, kOpen, kSave, kRun, kRefresh };

/// Sets the style and the style sheet of the whole application. Colours come from the palette, so a dark one works.
void ApplyLook();

/// A drawing at any size and scale, greyed by the style where a control is disabled.
[[nodiscard]] QIcon DrawnIcon(Drawing drawing);

}  // namespace qbx
