// A document in one line a paragraph, to compare it by.

#pragma once

#include <QString>
#include <QTextDocument>

namespace qbx {

/// The text with its formats: "<left 20 disc 1>" before a paragraph, "[b i 10pt Arial]" where characters change. The
/// usual format of the tests, 12 points Tahoma, is left out. Lengths are in pixels.
[[nodiscard]] QString Described(const QTextDocument& document);

}  // namespace qbx
