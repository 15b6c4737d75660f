// How the rows of a grid look: colours and fonts of the user options, made readable.

#pragma once

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QPalette>

#include "settings/user_options.h"

namespace qbx {

/// Look of a cell or row. An invalid colour is the palette's.
struct GridStyle {
  QFont font;
  QColor background = {};
  QColor foreground = {};
};

/// Everything that a grid is drawn with.
struct GridStyles {
  GridStyle odd;  ///< first, third ... row
  GridStyle even;
  GridStyle section;
  GridStyle heading;
  QColor sorted;  ///< background of the sorted column's heading
};

/// A colour number of the options: 24-bit RGB, red in the lowest byte.
[[nodiscard]] QColor ColourOf(int number);

/// The styles of a user. Where an option is missing (a font without a name or size) or could not be read (text in the
/// colour of its background, both colours 0) the palette's own font and colours take its place, and so they do in a dark
/// palette where the user kept the colours every user starts with.
/// \param base  palette and font of the grid
[[nodiscard]] GridStyles StylesOf(const UserOptions& options, const QPalette& base, const QFont& font);

/// Black or white, whichever reads better on a background.
[[nodiscard]] QColor ReadableOn(const QColor& background);

}  // namespace qbx
