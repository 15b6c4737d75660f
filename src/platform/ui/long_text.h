// Long texts in text boxes.

#pragma once

#include <QString>

class QPlainTextEdit;

namespace qbx {

/// Shows a text. A text with a very long line is not wrapped: the time for breaking a line grows with the square of its
/// length, and a megabyte takes minutes.
void SetLongText(QPlainTextEdit& box, const QString& text);

/// Shows a text unless the box holds it already, so that the caret stays.
void ShowText(QPlainTextEdit& box, const QString& text);

/// The exact text of a box: non-breaking blanks stay, and lines end as in `before`, the text that was shown in it.
[[nodiscard]] QString ExactText(const QPlainTextEdit& box, const QString& before);

}  // namespace qbx
