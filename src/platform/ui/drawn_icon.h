// The drawings of the program: icons/*.svg, in the colours of the palette.

#pragma once

#include <QIcon>

namespace qbx {

/// One file of icons/ each.
enum class Drawing {
  kAlignCentre,
  kAlignLeft,
  kAlignRight,
  kBoats,
  kBold,
  kBullets,
  kCalendar,
  kColour,
  kCopy,
  kCustomers,
  kCut,
  kFind,
  kInformation,
  kItalic,
  kLogo,
  kNew,
  kOpen,
  kPageBreak,
  kPaste,
  kRedo,
  kRefresh,
  kRun,
  kSave,
  kUnderline,
  kUndo,
  kVehicles
};

/// A drawing at any size and scale. Its "currentColor" is that of the text of buttons, of a disabled control or of a selected row,
/// as the palette has it when it is painted; kLogo and kInformation have the accent colour.
[[nodiscard]] QIcon DrawnIcon(Drawing drawing);

}  // namespace qbx
