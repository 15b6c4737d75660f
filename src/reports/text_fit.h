// A text in its frame: broken into lines, made smaller, cut.

#pragma once

#include <QFont>
#include <QPaintDevice>
#include <QSizeF>
#include <QString>
#include <QTextLayout>
#include <memory>

#include "reports/report_definition.h"

namespace qbx {

/// Stands for screen and paper: text is measured in units of it.
[[nodiscard]] QPaintDevice& LayoutDevice();

/// Makes letters a whole number of units wide: finer than any printer, and a third less to write to a file.
inline constexpr QFont::HintingPreference kHinting = QFont::PreferFullHinting;

/// The font of a style, measured alike on every device.
[[nodiscard]] QFont FontOf(const ReportStyle& style, qreal points);

/// A text as it is broken into lines.
struct FittedText {
  std::unique_ptr<QTextLayout> lines;
  int shown = 0;     ///< lines that are drawn
  qreal height = 0;  ///< of those
  qreal points = 0;  ///< the size that it came to
  bool fits = true;  ///< false: something of it is left out, and the last line ends in "…"
};

/// Breaks a text into lines of a width. What may grow has all its lines. Anything else has those that find room, at least one, in the largest size that
/// takes them all, down to `shrinkTo`.
[[nodiscard]] FittedText FitText(const QString& text, const TextObject& object, QSizeF frame);

/// A text without the lines in which nothing stands.
[[nodiscard]] QString WithoutBlankLines(const QString& text);

}  // namespace qbx
