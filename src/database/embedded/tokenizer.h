// Cuts a batch of statements into tokens.

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qbx {

enum class TokenKind {
  kWord,    ///< a name or keyword without quotes
  kQuoted,  ///< a name in brackets or double quotes
  kString,  ///< a text literal, with the N before it
  kNumber,
  kParameter,  ///< @name
  kSymbol,     ///< an operator or punctuation, one or two characters
  kBad,        ///< a literal, name or comment that is not closed
};

struct Token {
  TokenKind kind = TokenKind::kSymbol;
  std::string_view text;  ///< as written, with its quotes

  /// Whether it is this keyword, without regard to case.
  /// \param upper  the keyword in upper case
  [[nodiscard]] bool IsWord(std::string_view upper) const;
  [[nodiscard]] bool IsSymbol(std::string_view symbol) const { return kind == TokenKind::kSymbol && text == symbol; }
  /// The content of a quoted name or text literal: without its quotes, and with doubled quotes made single. Any other
  /// token as it is written.
  [[nodiscard]] std::string Content() const;
};

/// The tokens of a batch, without blanks and comments. They refer to `batch`.
void Tokenize(std::string_view batch, std::vector<Token>& tokens);

}  // namespace qbx
