// Fitting a text into its frame: breaking it into lines, shrinking it, cutting it.

#pragma once

#include <QFont>
#include <QPaintDevice>
#include <QSizeF>
#include <QString>
#include <QTextLayout>
#include <memory>

#include "reports/report_definition.h"

namespace qbx {

/// The device for measuring text. Its pixels are the units of reports, for screen and paper.
[[nodiscard]] QPaintDevice& LayoutDevice();

/// Makes letters whole units wide. No printer is finer, and the file becomes a third smaller.
inline constexpr QFont::HintingPreference kHinting = QFont::PreferFullHinting;

/// The font of a style, measured alike on every device.
[[nodiscard]] QFont FontOf(const ReportStyle& style, qreal points);

/// A text broken into lines.
struct FittedText {
  std::unique_ptr<QTextLayout> lines;
  int shown = 0;     ///< number of lines that are drawn
  qreal height = 0;  ///< of these lines
  qreal points = 0;  ///< the size that was used
  bool fits = true;  ///< false when a part is left out; the last line then ends in "…"
};

/// Breaks a text into lines of a width. A text that may grow shows all its lines. Any other text is shown in the
/// largest size, down to `shrinkTo`, in which all lines fit; otherwise as many lines as fit are shown, at least one.
[[nodiscard]] FittedText FitText(const QString& text, const TextObject& object, QSizeF frame);

/// A text without its empty lines.
[[nodiscard]] QString WithoutBlankLines(const QString& text);

}  // namespace qbx
