// Colours that can be told apart.

#pragma once

#include <QColor>
#include <QPalette>
#include <initializer_list>

namespace qbx {

inline constexpr double kTextContrast = 4.5;  ///< at least, for text
inline constexpr double kMarkContrast = 3.0;  ///< at least, for a drawing that says something

/// The contrast of two colours as the accessibility guidelines of the web define it, 1 to 21. Transparency counts as none.
[[nodiscard]] double Contrast(const QColor& left, const QColor& right);

/// \param share  of `right`, 0 to 1
[[nodiscard]] QColor Mixed(const QColor& left, const QColor& right, double share);

/// A colour with as much of another mixed into it as gives it a contrast on every background.
/// \param towards  the colour itself when even that has less
[[nodiscard]] QColor Readable(const QColor& colour, const QColor& towards, std::initializer_list<QColor> backgrounds,
                              double least);

/// Whether a palette has light text on a dark background.
[[nodiscard]] bool IsDark(const QPalette& palette);

/// As light as a page of tabs or a button gets that is drawn on a colour.
[[nodiscard]] QColor Raised(const QColor& colour);

/// The highlight of a palette, brought out where it is a line and not a background.
[[nodiscard]] QColor AccentColour(const QPalette& palette);

}  // namespace qbx
