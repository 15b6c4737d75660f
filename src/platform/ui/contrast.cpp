#include "platform/ui/contrast.h"

#include <algorithm>
#include <cmath>

namespace qbx {
namespace {

double Luminance(const QColor& colour) {
  const auto linear = [](double part) {
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

}  // namespace

double Contrast(const QColor& left, const QColor& right) {
  const double a = Luminance(left);
  const double b = Luminance(right);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QColor Mixed(const QColor& left, const QColor& right, double share) {
  const auto mix = [share](int a, int b) { return static_cast<int>(std::lround(a * (1 - share) + b * share)); };
  return {mix(left.red(), right.red()), mix(left.green(), right.green()), mix(left.blue(), right.blue())};
}

QColor Readable(const QColor& colour, const QColor& towards, std::initializer_list<QColor> backgrounds, double least) {
  constexpr int kSteps = 50;
  for (int step = 0; step < kSteps; ++step) {
    const QColor mixed = Mixed(colour, towards, static_cast<double>(step) / kSteps);
    if (std::all_of(backgrounds.begin(), backgrounds.end(),
                    [&](const QColor& background) { return Contrast(mixed, background) >= least; }))
      return mixed;
  }
  return towards;
}

bool IsDark(const QPalette& palette) {
  return Luminance(palette.color(QPalette::Base)) < Luminance(palette.color(QPalette::Text));
}

QColor Raised(const QColor& colour) {
  return colour.lighter(140);
}

QColor AccentColour(const QPalette& palette) {
  const QColor window = palette.color(QPalette::Window);
  return Readable(palette.color(QPalette::Highlight), palette.color(QPalette::WindowText), {window, Raised(window)},
                  kMarkContrast);
}

}  // namespace qbx
