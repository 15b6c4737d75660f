// How the rows of a grid look: colours and fonts of the user options, made readable.

#include "grids/ui/grid_style.h"

#include <cmath>

namespace qbx {
namespace {

constexpr double kLeastContrast = 2.0;  // below it nobody reads on

// What a user has before anything was chosen. On a dark desktop these are not a choice, and give way.
constexpr int kFirstOddBackground = 0xFFFFFF;
constexpr int kFirstEvenBackground = 0xF5F5F5;
constexpr int kFirstSorted = 0xE0E0E0;

double Luminance(const QColor& colour) {
  const auto linear = [](double part) {
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

/// As the accessibility guidelines of the web define it, 1 to 21.
double Contrast(const QColor& left, const QColor& right) {
  const double a = Luminance(left);
  const double b = Luminance(right);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

bool IsDark(const QPalette& palette) {
  return Luminance(palette.color(QPalette::Base)) < Luminance(palette.color(QPalette::Text));
}

QColor Mixed(const QColor& left, const QColor& right, double share) {
  const auto mix = [share](int a, int b) { return static_cast<int>(std::lround(a * (1 - share) + b * share)); };
  return {mix(left.red(), right.red()), mix(left.green(), right.green()), mix(left.blue(), right.blue())};
}

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

/// The user's pair, or the palette's when it cannot be read or was never chosen.
Colours PairOf(int background, int foreground, int neverChosen, const QPalette& base, QPalette::ColorRole role) {
  const Colours user{ColourOf(background), ColourOf(foreground)};
  const bool givesWay = IsDark(base) && background == neverChosen && foreground == 0;
  if (!givesWay && Contrast(user.background, user.foreground) >= kLeastContrast) return user;
  return {base.color(role), base.color(QPalette::Text)};
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
  const int sorted = options.SORTED_COLUMN_COLOUR;
  const bool chosen = sorted != 0 && !(IsDark(base) && sorted == kFirstSorted);
  styles.sorted =
      chosen ? ColourOf(sorted) : Mixed(base.color(QPalette::Button), base.color(QPalette::Highlight), 0.35);
  return styles;
}

}  // namespace qbx
