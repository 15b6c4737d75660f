#include "database/embedded/tokenizer.h"

namespace qbx {
namespace {

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f';
}
bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
bool IsNameStart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '#' ||
         static_cast<unsigned char>(c) >= 0x80;
}
bool IsNameCharacter(char c) {
  return IsNameStart(c) || IsDigit(c) || c == '$' || c == '@';
}

/// Goes through a batch once.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : text_(text) {}

  bool Next(Token& token) {
    if (!SkipBlanks()) {
      token = {TokenKind::kBad, text_.substr(position_)};
      position_ = text_.size();
      return true;
    }
    if (position_ == text_.size()) return false;
    start_ = position_;
    token.kind = Scan();
    token.text = text_.substr(start_, position_ - start_);
    return true;
  }

 private:
  [[nodiscard]] char At(std::size_t offset) const {
    return position_ + offset < text_.size() ? text_[position_ + offset] : '\0';
  }

  /// \return false at a comment that is not closed
  bool SkipBlanks() {
    while (position_ < text_.size()) {
      if (IsBlank(text_[position_])) {
        ++position_;
      } else if (At(0) == '-' && At(1) == '-') {
        const std::size_t end = text_.find('\n', position_);
        position_ = end == std::string_view::npos ? text_.size() : end;
      } else if (At(0) == '/' && At(1) == '*') {
        const std::size_t end = text_.find("*/", position_ + 2);
        if (end == std::string_view::npos) return false;
        position_ = end + 2;
      } else {
        break;
      }
    }
    return true;
  }

  TokenKind Scan() {
    const char c = At(0);
    if ((c == 'N' || c == 'n') && At(1) == '\'') {
      ++position_;
      return ScanQuoted('\'', TokenKind::kString);
    }
    if (c == '\'') return ScanQuoted('\'', TokenKind::kString);
    if (c == '"') return ScanQuoted('"', TokenKind::kQuoted);
    if (c == '[') return ScanQuoted(']', TokenKind::kQuoted);
    if (IsDigit(c) || (c == '.' && IsDigit(At(1)))) return ScanNumber();
    if (c == '@' && IsNameCharacter(At(1))) {
      ++position_;
      return ScanName(TokenKind::kParameter);
    }
    if (IsNameStart(c)) return ScanName(TokenKind::kWord);
    const char next = At(1);
    const bool pair =
        ((c == '<' || c == '>' || c == '!') && next == '=') || (c == '<' && next == '>') || (c == '|' && next == '|');
    position_ += pair ? 2 : 1;
    return TokenKind::kSymbol;
  }

  TokenKind ScanQuoted(char close, TokenKind kind) {
    for (++position_; position_ < text_.size(); ++position_) {
      if (text_[position_] != close) continue;
      if (At(1) == close) {
        ++position_;
        continue;
      }
      ++position_;
      return kind;
    }
    return TokenKind::kBad;
  }

  TokenKind ScanName(TokenKind kind) {
    while (IsNameCharacter(At(0)) && position_ < text_.size())
      ++position_;
    return kind;
  }

  TokenKind ScanNumber() {
    while (IsDigit(At(0)) || At(0) == '.')
      ++position_;
    if (At(0) == 'e' || At(0) == 'E') {
      const std::size_t sign = At(1) == '+' || At(1) == '-' ? 1 : 0;
      if (IsDigit(At(1 + sign))) {
        position_ += 1 + sign;
        while (IsDigit(At(0)))
          ++position_;
      }
    }
    return TokenKind::kNumber;
  }

  std::string_view text_;
  std::size_t position_ = 0;
  std::size_t start_ = 0;
};

}  // namespace

bool Token::IsWord(std::string_view upper) const {
  if (kind != TokenKind::kWord || text.size() != upper.size()) return false;
  for (std::size_t i = 0; i < upper.size(); ++i) {
    const char c = text[i];
    if ((c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c) != upper[i]) return false;
  }
  return true;
}

std::string Token::Content() const {
  std::string_view inner = text;
  if (kind == TokenKind::kString && inner.front() != '\'') inner.remove_prefix(1);
  if (kind != TokenKind::kString && kind != TokenKind::kQuoted) return std::string(inner);
  const char close = inner.back();
  inner = inner.substr(1, inner.size() - 2);
  std::string content;
  content.reserve(inner.size());
  for (std::size_t i = 0; i < inner.size(); ++i) {
    content += inner[i];
    if (inner[i] == close) ++i;
  }
  return content;
}

void Tokenize(std::string_view batch, std::vector<Token>& tokens) {
  tokens.clear();
  Scanner scanner(batch);
  Token token;
  while (scanner.Next(token))
    tokens.push_back(token);
}

}  // namespace qbx
