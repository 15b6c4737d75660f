// Alt letters in captions that are not in a form.

#pragma once

#include <QString>

namespace qbx {

/// A caption with "&" before its first occurrence of a letter (ignoring case), so that Alt and the letter move the
/// focus there. A caption that lacks the letter is unchanged.
[[nodiscard]] inline QString WithLetter(QString caption, char letter) {
  caption.replace(QLatin1Char('&'), QLatin1String("&&"));
  const qsizetype place = caption.indexOf(QLatin1Char(letter), 0, Qt::CaseInsensitive);
  return place < 0 ? caption : caption.insert(place, QLatin1Char('&'));
}

}  // namespace qbx
