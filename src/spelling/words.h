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

/// The words of a text in Unicode's sense, in their order. Merge fields, web and e-mail addresses, abbreviations with
/// full stops ("e.g."), words with digits, words in capitals ("MOT", "MOTs") and single letters are left out.
[[nodiscard]] std::vector<WordPlace> WordsToCheck(const QString& text);

/// The word of `WordsToCheck` that contains or touches a position, if there is one.
[[nodiscard]] std::optional<WordPlace> WordAt(const QString& text, qsizetype position);

}  // namespace qbx
