// Comparing text as the host's collation does.

#pragma once

#include <QtGlobal>
#include <string>
#include <string_view>

namespace qbx {

/// Compares UTF-8 texts by folded code point, without regard to case and to blanks at the end. Fast for ASCII.
/// \return below, at or above zero
[[nodiscard]] int CompareNoCase(std::string_view left, std::string_view right);

/// The first characters of a text, folded and packed. When two texts differ in this number, the smaller number comes
/// first; when they do not, only CompareNoCase can tell.
[[nodiscard]] quint64 FoldedStart(std::string_view text);

/// The text behind the characters that `FoldedStart` packs.
[[nodiscard]] std::string_view BehindStart(std::string_view text);

/// Whether a text starts with another, without regard to case.
[[nodiscard]] bool StartsWithNoCase(std::string_view text, std::string_view start);

/// A text that is looked for in many others, without regard to case.
class SoughtText {
 public:
  /// \param text  not empty; must outlive this
  explicit SoughtText(std::string_view text);

  [[nodiscard]] bool IsIn(std::string_view text) const;

 private:
  [[nodiscard]] bool StartsAt(std::string_view text) const;

  std::string_view text_;
  std::string folded_;   // the folded text when all of it is ASCII, else empty
  unsigned char lower_;  // lower case of its first byte
  unsigned char upper_;
};

}  // namespace qbx
