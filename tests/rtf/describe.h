// A document in one line a paragraph, to compare it by.

#pragma once

#include <QString>
#include <QTextDocument>

namespace qbx {

/// The text with its looks: "<left 20 disc 1>" in front of a paragraph, "[b i 10pt Arial]" where characters change, each
/// without what every letter of the tests has (12 points Tahoma). Lengths are in pixels.
[[nodiscard]] QString Described(const QTextDocument& document);

}  // namespace qbx
