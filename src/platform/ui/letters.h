// Letters for Alt in captions that are not written in a form.

#pragma once

#include <QString>

namespace qbx {

/// A caption with the letter that moves the focus there together with Alt: the first place where the caption has it, whatever its case.
/// A caption without it stays without a letter.
[[nodiscard]] inline QString WithLetter(QString caption, char letter) {
  caption.replace(QLatin1Char('&'), QLatin1String("&&"));
  const qsizetype place = caption.indexOf(QLatin1Char(letter), 0, Qt::CaseInsensitive);
  return place < 0 ? caption : caption.insert(place, QLatin1Char('&'));
}

}  // namespace qbx
