// Colours and fonts of a grid's rows: the user's, made readable.

#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

#include "settings/user_options.h"

namespace qbx {

/// The look of a cell or row. An invalid colour means that of the palette.
struct GridStyle {
  QFont font;
  QColor background = {};
  QColor foreground = {};
};

/// Everything that a grid is drawn with.
struct GridStyles {
  GridStyle odd;  ///< for the first, third, ... row
  GridStyle even;
  GridStyle section;
  GridStyle heading;
  QColor sorted;    ///< background of the sorted column's heading
  QColor filtered;  ///< background of a filtered column's heading
};

/// A colour number of the options: 24-bit RGB, red in the lowest byte.
[[nodiscard]] QColor ColourOf(int number);

/// The styles of a user. The palette's font or colours are used instead where an option is missing (a font without a
/// name or size) or unreadable (text in the colour of its background, both colours 0), and in a dark palette where the
/// user never changed the initial colours.
/// \param base  palette and font of the grid
[[nodiscard]] GridStyles StylesOf(const UserOptions& options, const QPalette& base, const QFont& font);

/// Black or white, whichever is easier to read on a background.
[[nodiscard]] QColor ReadableOn(const QColor& background);

}  // namespace qbx
