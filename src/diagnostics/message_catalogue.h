// Numbered messages with placeholders.

#pragma once

#include <QString>
#include <QStringList>

namespace qbx {

/// The text of a numbered message, "\n" turned into carriage returns and the placeholders "<<%1>>" to "<<%5>>" filled
/// from `values` in order. Placeholders without a value stay as they are; a number that is not in the catalogue says
/// so.
[[nodiscard]] QString AppMessage(int number, const QStringList& values = {});

}  // namespace qbx
