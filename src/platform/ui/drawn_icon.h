// The icons of the program: icons/*.svg in the colours of the palette.

#pragma once

#include <QIcon>

namespace qbx {

/// Each is one file of icons/.
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

/// A drawing at any size and scale. At each painting its "currentColor" is replaced from the palette: by the text
/// colour of buttons, disabled controls or selected rows, or by the accent colour for kLogo and kInformation.
[[nodiscard]] QIcon DrawnIcon(Drawing drawing);

}  // namespace qbx
