// The look of every window of the program.

#pragma once

#include <QIcon>
#include <QPalette>

namespace qbx {

/// The drawings of the program, lines in the text colour of the palette.
enum class Drawing {
  kLogo,
  kInformation,
  kCustomers,
  kVehicles,
  kBoats,
  kCalendar,
  kNew,
  kOpen,
  kSave,
  kRun,
  kRefresh,
  kCut,
  kCopy,
  kPaste,
  kBold,
  kItalic,
  kUnderline,
  kAlignLeft,
  kAlignCentre,
  kAlignRight,
  kBullets,
  kColour,
  kUndo,
  kRedo,
  kFind,
  kPageBreak
};

/// Sets the style and the style sheet of the whole application. Colours come from the palette, so a dark palette works;
/// faint ones are made readable. Turning the wheel over a list box or number box without focus scrolls the page and
/// does not change the value.
void ApplyLook();

/// A palette whose highlight and placeholder text are made readable.
[[nodiscard]] QPalette ReadableParts(const QPalette& palette);

/// A drawing at any size and scale, greyed by the style where a control is disabled.
[[nodiscard]] QIcon DrawnIcon(Drawing drawing);

}  // namespace qbx
