// Long texts in text boxes.

#pragma once

#include <QString>

class QPlainTextEdit;

namespace qbx {

/// Shows a text. One with a very long line is shown unwrapped: breaking a line takes time with the square of its length, minutes for a
/// megabyte.
void SetLongText(QPlainTextEdit& box, const QString& text);

/// Shows a text unless the box holds it already, where the caret would be lost.
void ShowText(QPlainTextEdit& box, const QString& text);

/// The text of a box to the letter: blanks that do not break stay, and lines end as they do in `before`, the text that was put into it.
[[nodiscard]] QString ExactText(const QPlainTextEdit& box, const QString& before);

}  // namespace qbx
