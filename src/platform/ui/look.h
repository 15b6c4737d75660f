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

/// Contrast of text with what it stands on, and of marks and lines, at least (WCAG 2.1, success criteria 1.4.3 and 1.4.11).
inline constexpr double kTextContrast = 4.5;
inline constexpr double kMarkContrast = 3.0;

/// The contrast of two colours, 1 to 21 (WCAG 2.1, "contrast ratio").
[[nodiscard]] double ContrastRatio(const QColor& one, const QColor& other);

/// A palette whose selection, placeholder texts and, where it is dark, frames stand out enough.
[[nodiscard]] QPalette ReadablePalette(QPalette palette);

/// Sets the style and the style sheet of the whole application. Colours come from the palette, so a dark one works. A wheel that is turned
/// over a list box or a number box which does not have the focus scrolls the page and leaves the value alone.
void ApplyLook();

/// A drawing at any size and scale, greyed by the style where a control is disabled.
[[nodiscard]] QIcon DrawnIcon(Drawing drawing);

}  // namespace qbx
