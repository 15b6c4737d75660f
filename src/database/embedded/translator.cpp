#include "database/embedded/translator.h"

#include <algorithm>
#include <charconv>

#include "database/embedded/errors.h"

namespace qbx {
namespace {

// Further literals stay in the text, because the number of parameters is limited.
constexpr std::size_t kMostLiterals = 200;

bool IsAnyWord(const Token& token, std::initializer_list<std::string_view> words) {
  return std::any_of(words.begin(), words.end(), [&token](std::string_view word) { return token.IsWord(word); });
}

bool IsName(const Token& token) {
  return token.kind == TokenKind::kWord || token.kind == TokenKind::kQuoted;
}

bool IsHint(const Token& token) {
  return IsAnyWord(token,
                   {"NOLOCK", "READUNCOMMITTED", "READPAST", "ROWLOCK", "UPDLOCK", "HOLDLOCK", "TABLOCK", "TABLOCKX"});
}

/// Goes through the tokens of one statement and writes the translation.
class SqlWriter {
 public:
  explicit SqlWriter(Tokens tokens) : tokens_(tokens) { levels_.push_back({}); }

  SqlStatement Write() {
    mayBind_ = !tokens_.front().IsWord("CREATE") && !tokens_.front().IsWord("ALTER");
    while (at_ < tokens_.size())
      WriteNext();
    if (levels_.size() != 1) ThrowSyntaxError(tokens_.back().text);
    WriteLimit();
    return std::move(result_);
  }

 private:
  /// One pair of parentheses.
  struct Level {
    std::string_view top = {};  // the number of rows that TOP asks for, written as LIMIT
    bool bind = false;          // whether literals become parameters
    bool cast = false;
  };

  [[nodiscard]] const Token* Ahead(std::size_t offset) const {
    return at_ + offset < tokens_.size() ? &tokens_[at_ + offset] : nullptr;
  }
  [[nodiscard]] bool AheadIsSymbol(std::size_t offset, std::string_view symbol) const {
    const Token* token = Ahead(offset);
    return token != nullptr && token->IsSymbol(symbol);
  }
  void Put(std::string_view text) {
    if (!result_.sql.empty()) result_.sql += ' ';
    result_.sql += text;
  }

  void WriteNext() {
    const Token& token = tokens_[at_];
    switch (token.kind) {
      case TokenKind::kBad:
        throw ServerError(105, QStringLiteral("Unclosed quotation mark after the character string '%1'.")
                                   .arg(QString::fromUtf8(token.text.substr(1))));
      case TokenKind::kParameter:
        throw ServerError(137,
                          QStringLiteral("Must declare the scalar variable '%1'.").arg(QString::fromUtf8(token.text)));
      case TokenKind::kWord:
        return WriteWord(token);
      case TokenKind::kQuoted:
        return WriteQuoted(token);
      case TokenKind::kString:
      case TokenKind::kNumber:
        return WriteLiteral(token);
      case TokenKind::kSymbol:
        return WriteSymbol(token);
    }
  }

  void WriteWord(const Token& token) {
    if (SkipHints() || SkipOwner(token)) return;
    if (token.IsWord("ISNULL") && AheadIsSymbol(1, "(")) {
      Put("ifnull");
    } else if (token.text.front() == '#') {
      Put('"' + std::string(token.text) + '"');
    } else {
      Put(token.text);
    }
    ++at_;
    EnterClause(token);
  }

  void EnterClause(const Token& token) {
    Level& level = levels_.back();
    if (token.IsWord("SELECT")) {
      level.bind = false;
      ReadTop();
    } else if (IsAnyWord(token, {"WHERE", "SET", "VALUES"})) {
      level.bind = mayBind_;
    } else if (IsAnyWord(token, {"ORDER", "GROUP", "FROM", "LIMIT", "RETURNING"}) ||
               (token.IsWord("AS") && level.cast)) {
      level.bind = false;
    } else if (IsAnyWord(token, {"UNION", "EXCEPT", "INTERSECT"}) && !level.top.empty()) {
      ThrowSyntaxError(token.text);
    } else if (at_ == 1) {
      WriteFiller(token);
    }
  }

  /// Writes INTO or FROM, which the server allows to leave out.
  void WriteFiller(const Token& verb) {
    const Token* next = Ahead(0);
    if (next == nullptr || !IsName(*next)) return;
    if (verb.IsWord("INSERT") && !next->IsWord("INTO")) Put("INTO");
    if (verb.IsWord("DELETE") && !next->IsWord("FROM")) Put("FROM");
  }

  void ReadTop() {
    if (const Token* next = Ahead(0); next != nullptr && IsAnyWord(*next, {"DISTINCT", "ALL"})) {
      Put(next->text);
      ++at_;
    }
    const Token* next = Ahead(0);
    if (next == nullptr || !next->IsWord("TOP")) return;
    const bool parentheses = AheadIsSymbol(1, "(");
    const std::size_t number = parentheses ? 2 : 1;
    const Token* count = Ahead(number);
    if (count == nullptr || count->kind != TokenKind::kNumber) ThrowSyntaxError("TOP");
    if (parentheses && !AheadIsSymbol(3, ")")) ThrowSyntaxError("TOP");
    levels_.back().top = count->text;
    at_ += number + (parentheses ? 2 : 1);
    if (const Token* behind = Ahead(0); behind != nullptr && IsAnyWord(*behind, {"PERCENT", "WITH"}))
      ThrowSyntaxError(behind->text);
  }

  /// Skips "WITH (hint, ...)" and "(hint, ...)" at the current token.
  bool SkipHints() {
    std::size_t offset = Ahead(0)->IsWord("WITH") ? 1 : 0;
    if (!AheadIsSymbol(offset, "(")) return false;
    do {
      ++offset;
      if (Ahead(offset) == nullptr || !IsHint(*Ahead(offset))) return false;
      ++offset;
    } while (AheadIsSymbol(offset, ","));
    if (!AheadIsSymbol(offset, ")")) return false;
    at_ += offset + 1;
    return true;
  }

  bool SkipOwner(const Token& token) {
    if (!AheadIsSymbol(1, ".") ||
        QString::fromUtf8(token.Content()).compare(QLatin1String("dbo"), Qt::CaseInsensitive) != 0)
      return false;
    at_ += 2;
    return true;
  }

  void WriteQuoted(const Token& token) {
    if (SkipOwner(token)) return;
    std::string name = "\"";
    for (const char c : token.Content()) {
      name += c;
      if (c == '"') name += c;
    }
    Put(name + '"');
    ++at_;
  }

  void WriteLiteral(const Token& token) {
    if (levels_.back().bind && result_.literals.size() < kMostLiterals) {
      result_.literals.push_back(token);
      Put("?" + std::to_string(result_.literals.size()));
    } else {
      const bool national = token.kind == TokenKind::kString && token.text.front() != '\'';
      Put(national ? token.text.substr(1) : token.text);
    }
    ++at_;
  }

  void WriteSymbol(const Token& token) {
    if (SkipHints()) return;
    if (token.text == "?" || token.text == ":") ThrowSyntaxError(token.text);  // SQLite would read them as parameters
    if (token.text == "(") {
      const bool cast = at_ > 0 && tokens_[at_ - 1].IsWord("CAST");
      levels_.push_back({{}, levels_.back().bind, cast});
    } else if (token.text == ")") {
      if (levels_.size() == 1) ThrowSyntaxError(token.text);
      WriteLimit();
      levels_.pop_back();
    }
    Put(token.text == "+" && JoinsText() ? "||" : token.text);
    ++at_;
  }

  [[nodiscard]] bool JoinsText() const {
    const auto isText = [](const Token* token) { return token != nullptr && token->kind == TokenKind::kString; };
    return isText(Ahead(1)) || (at_ > 0 && isText(&tokens_[at_ - 1]));
  }

  void WriteLimit() {
    if (levels_.back().top.empty()) return;
    Put("LIMIT");
    Put(levels_.back().top);
  }

  Tokens tokens_;
  std::size_t at_ = 0;
  std::vector<Level> levels_;
  bool mayBind_ = true;
  SqlStatement result_;
};

/// Reads the arguments of a call.
class CallReader {
 public:
  explicit CallReader(Tokens tokens) : tokens_(tokens) {}

  WrittenCall Read() {
    if (IsAnyWord(tokens_[0], {"EXEC", "EXECUTE"})) ++at_;
    ReadName();
    const bool parentheses = AtSymbol("(");
    if (parentheses) ++at_;
    if (!Done() && !AtSymbol(")")) ReadArguments();
    if (parentheses) {
      if (!AtSymbol(")")) ThrowHere();
      ++at_;
    }
    if (!Done()) ThrowHere();
    return std::move(call_);
  }

 private:
  [[nodiscard]] bool Done() const { return at_ >= tokens_.size(); }
  [[nodiscard]] bool AtSymbol(std::string_view symbol) const { return !Done() && tokens_[at_].IsSymbol(symbol); }
  [[noreturn]] void ThrowHere() const { ThrowSyntaxError(Done() ? tokens_.back().text : tokens_[at_].text); }

  void ReadName() {
    if (Done() || !IsName(tokens_[at_])) ThrowHere();
    call_.name = QString::fromUtf8(tokens_[at_++].Content());
    if (!AtSymbol(".")) return;
    ++at_;
    ReadName();
  }

  void ReadArguments() {
    for (;;) {
      QString name;
      if (!Done() && tokens_[at_].kind == TokenKind::kParameter) {
        name = QString::fromUtf8(tokens_[at_++].text);
        if (!AtSymbol("=")) ThrowHere();
        ++at_;
      }
      call_.arguments.emplace_back(name, ReadValue());
      if (!AtSymbol(",")) return;
      ++at_;
    }
  }

  Value ReadValue() {
    const bool negative = AtSymbol("-");
    if (negative || AtSymbol("+")) ++at_;
    if (Done()) ThrowHere();
    const Token& token = tokens_[at_];
    const bool isNull = token.IsWord("NULL");
    const bool isLiteral = token.kind == TokenKind::kNumber || (token.kind == TokenKind::kString && !negative);
    if (token.kind == TokenKind::kBad) {
      throw ServerError(105, QStringLiteral("Unclosed quotation mark after the character string '%1'.")
                                 .arg(QString::fromUtf8(token.text.substr(1))));
    }
    if (!isNull && !isLiteral) ThrowHere();
    ++at_;
    return isNull ? Value() : LiteralValue(token, negative);
  }

  Tokens tokens_;
  std::size_t at_ = 0;
  WrittenCall call_;
};

bool IsTrigger(Tokens statement) {
  return statement.size() > 2 && statement[0].IsWord("CREATE") &&
         (statement[1].IsWord("TRIGGER") || statement[2].IsWord("TRIGGER"));
}

}  // namespace

void ThrowSyntaxError(std::string_view near) {
  throw ServerError(102, QStringLiteral("Incorrect syntax near '%1'.").arg(QString::fromUtf8(near)));
}

std::vector<Tokens> SplitStatements(const std::vector<Token>& tokens) {
  std::vector<Tokens> statements;
  std::size_t start = 0;
  for (std::size_t i = 0; i <= tokens.size(); ++i) {
    if (i < tokens.size() && !tokens[i].IsSymbol(";")) continue;
    const Tokens statement(tokens.data() + start, i - start);
    // A trigger contains the statements up to its END.
    if (i < tokens.size() && IsTrigger(statement) && !statement.back().IsWord("END")) continue;
    if (!statement.empty()) statements.push_back(statement);
    start = i + 1;
  }
  return statements;
}

StatementKind KindOf(Tokens statement) {
  const Token& first = statement.front();
  const bool second = statement.size() > 1;
  if (first.IsWord("ALTER") && second && statement[1].IsWord("DATABASE")) return StatementKind::kAlterDatabase;
  if (IsAnyWord(first, {"SELECT", "INSERT", "UPDATE", "DELETE", "WITH", "CREATE", "ALTER", "DROP"}))
    return StatementKind::kSql;
  const bool transaction = !second || IsAnyWord(statement[1], {"TRAN", "TRANSACTION"});
  if (first.IsWord("BEGIN") && second && transaction) return StatementKind::kBegin;
  if (first.IsWord("COMMIT") && transaction) return StatementKind::kCommit;
  if (first.IsWord("ROLLBACK") && transaction) return StatementKind::kRollback;
  return StatementKind::kCall;
}

WrittenCall ParseCall(Tokens statement) {
  return CallReader(statement).Read();
}

StatusChange ParseStatusChange(Tokens statement) {
  if (statement.size() < 5 || !IsName(statement[2])) ThrowSyntaxError(statement.back().text);
  if (!statement[3].IsWord("SET")) ThrowSyntaxError(statement[3].text);
  if (statement.size() > 5) ThrowSyntaxError(statement[5].text);
  if (!IsAnyWord(statement[4], {"ONLINE", "OFFLINE"})) ThrowSyntaxError(statement[4].text);
  return {QString::fromUtf8(statement[2].Content()), QString::fromUtf8(statement[4].text).toUpper()};
}

SqlStatement TranslateSql(Tokens statement) {
  return SqlWriter(statement).Write();
}

Value LiteralValue(const Token& literal, bool negative) {
  if (literal.kind == TokenKind::kString) return Value(QString::fromUtf8(literal.Content()));
  const char* begin = literal.text.data();
  const char* end = begin + literal.text.size();
  qint64 integer = 0;
  const auto result = std::from_chars(begin, end, integer);
  if (result.ec == std::errc() && result.ptr == end) return Value(negative ? -integer : integer);
  double number = 0;
  std::from_chars(begin, end, number);
  return Value(negative ? -number : number);
}

}  // namespace qbx
