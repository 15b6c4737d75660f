// Contrast of colours.

#pragma once

#include <QColor>
#include <QPalette>
#include <initializer_list>

namespace qbx {

inline constexpr double kTextContrast = 4.5;  ///< least contrast of text
inline constexpr double kMarkContrast = 3.0;  ///< least contrast of a meaningful drawing

/// The contrast of two colours as the Web Content Accessibility Guidelines define it, 1 to 21. Transparency is ignored.
[[nodiscard]] double Contrast(const QColor& left, const QColor& right);

/// \param share  of `right`, 0 to 1
[[nodiscard]] QColor Mixed(const QColor& left, const QColor& right, double share);

/// Mixes as much of another colour into a colour as it needs for a contrast on every background.
/// \param towards  the result when even this colour has less contrast
[[nodiscard]] QColor Readable(const QColor& colour, const QColor& towards, std::initializer_list<QColor> backgrounds,
                              double least);

/// Whether a palette has light text on a dark background.
[[nodiscard]] bool IsDark(const QPalette& palette);

/// The lightest background that a page of tabs or a button has on a colour.
[[nodiscard]] QColor Raised(const QColor& colour);

/// The highlight of a palette with enough contrast for lines.
[[nodiscard]] QColor AccentColour(const QPalette& palette);

}  // namespace qbx
