// How every window of the program looks.

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

/// Sets the style and the style sheet of the whole application. Colours come from the palette, so a dark one works, made readable where they
/// are too faint. A wheel that is turned
/// over a list box or a number box which does not have the focus scrolls the page and leaves the value alone.
void ApplyLook();

/// The parts of a palette that are made readable: the highlight behind its text, and the text of boxes that are empty.
[[nodiscard]] QPalette ReadableParts(const QPalette& palette);

/// A drawing at any size and scale, greyed by the style where a control is disabled.
[[nodiscard]] QIcon DrawnIcon(Drawing drawing);

}  // namespace qbx
