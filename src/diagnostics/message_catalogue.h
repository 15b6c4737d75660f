// Numbered messages with placeholders.

#pragma once

#include <QString>
#include <QStringList>

namespace qbx {

/// The text of a numbered message. "\n" becomes a carriage return; the placeholders "<<%1>>" to "<<%5>>" are filled
/// from `values` in order. A placeholder without a value stays. For an unknown number the text says so.
[[nodiscard]] QString AppMessage(int number, const QStringList& values = {});

}  // namespace qbx
