// The words of a text that are looked up in a dictionary.

#pragma once

#include <QString>
#include <optional>
#include <vector>

namespace qbx {

struct WordPlace {
  qsizetype start = 0;
  qsizetype length = 0;
};

/// Words in the sense of Unicode, in their order. Left out: merge fields, addresses of the web and of e-mail, abbreviations
/// with full stops ("e.g."), words with digits, words in capitals ("MOT", "MOTs"), single letters.
[[nodiscard]] std::vector<WordPlace> WordsToCheck(const QString& text);

/// The word of `WordsToCheck` that holds or touches a position, if any.
[[nodiscard]] std::optional<WordPlace> WordAt(const QString& text, qsizetype position);

}  // namespace qbx
