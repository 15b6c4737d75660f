#include "grids/ui/grid_style.h"

#include <QString>

#include "platform/ui/contrast.h"

namespace qbx {
namespace {

constexpr double kLeastContrast = 2.0;  // text with less contrast cannot be read

// The initial colours of a user. A dark palette replaces them, because nobody chose them.
constexpr int kFirstOddBackground = 0xFFFFFF;
constexpr int kFirstEvenBackground = 0xF5F5F5;
constexpr int kFirstSorted = 0xE0E0E0;

QFont FontOf(const QFont& base, const QString& name, int size, bool bold, bool italic, bool underline) {
  QFont font = base;
  if (!name.isEmpty()) font.setFamily(name);
  if (size > 0) font.setPointSize(size);
  font.setBold(bold);
  font.setItalic(italic);
  font.setUnderline(underline);
  return font;
}

struct Colours {
  QColor background;
  QColor foreground;
};

/// The user's pair of colours; the palette's when the pair is unreadable or was never chosen.
Colours PairOf(int background, int foreground, int neverChosen, const QPalette& base, QPalette::ColorRole role) {
  const Colours user{ColourOf(background), ColourOf(foreground)};
  const bool givesWay = IsDark(base) && background == neverChosen && foreground == 0;
  if (!givesWay && Contrast(user.background, user.foreground) >= kLeastContrast) return user;
  return {base.color(role), base.color(QPalette::Text)};
}

/// The colour of a marked heading: the user's, or a tint of the palette's when none was chosen.
QColor MarkOf(int colour, const QPalette& base) {
  const bool chosen = colour != 0 && !(IsDark(base) && colour == kFirstSorted);
  return chosen ? ColourOf(colour) : Mixed(base.color(QPalette::Button), base.color(QPalette::Highlight), 0.35);
}

}  // namespace

QColor ColourOf(int number) {
  return {number & 0xFF, (number >> 8) & 0xFF, (number >> 16) & 0xFF};
}

QColor ReadableOn(const QColor& background) {
  return Contrast(background, Qt::black) >= Contrast(background, Qt::white) ? QColor(Qt::black) : QColor(Qt::white);
}

GridStyles StylesOf(const UserOptions& options, const QPalette& base, const QFont& font) {
  const QFont line = FontOf(font, options.GRID_LINEFONT, options.GRID_LINEFONT_SIZE, options.GRID_LINEFONT_BOLD,
                            options.GRID_LINEFONT_ITALIC, options.GRID_LINEFONT_UNDERLINE);
  const Colours odd =
      PairOf(options.GRID_ODD_BACKCOLOUR, options.GRID_ODD_FORECOLOUR, kFirstOddBackground, base, QPalette::Base);
  const Colours even = PairOf(options.GRID_EVEN_BACKCOLOUR, options.GRID_EVEN_FORECOLOUR, kFirstEvenBackground, base,
                              QPalette::AlternateBase);
  const Colours section =
      PairOf(options.SECTION_GRID_BACKGROUND, options.SECTION_GRID_FOREGROUND, kFirstSorted, base, QPalette::Mid);
  GridStyles styles;
  styles.odd = {line, odd.background, odd.foreground};
  styles.even = {line, even.background, even.foreground};
  styles.section = {FontOf(line, options.SECTION_GRID_LINEFONT, options.SECTION_GRID_LINEFONT_SIZE,
                           options.SECTION_GRID_LINEFONT_BOLD, options.SECTION_GRID_LINEFONT_ITALIC,
                           options.SECTION_GRID_LINEFONT_UNDERLINE),
                    section.background,
                    Contrast(section.background, section.foreground) >= kLeastContrast
                        ? section.foreground
                        : ReadableOn(section.background)};
  styles.heading = {FontOf(font, options.GRID_HEADFONT, options.GRID_HEADFONT_SIZE, options.GRID_HEADFONT_BOLD,
                           options.GRID_HEADFONT_ITALIC, options.GRID_HEADFONT_UNDERLINE),
                    base.color(QPalette::Button), base.color(QPalette::ButtonText)};
  styles.sorted = MarkOf(options.SORTED_COLUMN_COLOUR, base);
  styles.filtered = MarkOf(options.FILTER_COLUMN_COLOUR, base);
  return styles;
}

}  // namespace qbx
