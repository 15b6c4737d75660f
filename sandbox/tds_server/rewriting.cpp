#include "tds_server/rewriting.h"

#include <QRegularExpression>

#include "database/embedded/errors.h"
#include "tds_server/parameters.h"

namespace qbx::tds {
namespace {

/// Inside a text literal, a server drops a "\" together with the line break behind it.
QString TextOf(const Token& token) {
  static const QRegularExpression kContinued(QStringLiteral("\\\\\\r?\\n"));
  QString text = QString::fromUtf8(token.text.data(), static_cast<qsizetype>(token.text.size()));
  return token.kind == TokenKind::kString ? text.remove(kContinued) : text;
}

/// Whether the token is the "+" beside a text, for which SQLite has another sign.
bool JoinsTexts(Tokens statement, std::size_t i) {
  return statement[i].IsSymbol("+") && i > 0 && i + 1 < statement.size() &&
         (statement[i - 1].kind == TokenKind::kString || statement[i + 1].kind == TokenKind::kString);
}

bool StartsStatement(const Token& token) {
  for (const char* word : {"SET", "SELECT", "INSERT", "UPDATE", "DELETE", "EXEC", "EXECUTE", "DECLARE", "BEGIN",
                           "COMMIT", "ROLLBACK", "USE", "PRINT", "IF", "CREATE", "DROP"}) {
    if (token.IsWord(word)) return true;
  }
  return false;
}

/// Where a SET of an option ends: before the next statement.
std::size_t EndOfOption(Tokens statement) {
  std::size_t end = 1;
  while (end < statement.size() && !StartsStatement(statement[end]))
    ++end;
  return end;
}

/// The name ("@@...") for a call of a function about the server; empty when there is no such call. `length` is its
/// number of tokens.
QString AskedOfServer(Tokens rest, std::size_t& length) {
  const auto symbol = [&rest](std::size_t i, const char* text) { return i < rest.size() && rest[i].IsSymbol(text); };
  length = 3;
  if (rest[0].IsWord("DB_NAME") && symbol(1, "(") && symbol(2, ")")) return QStringLiteral("@@DB_NAME");
  if (rest[0].IsWord("SCOPE_IDENTITY") && symbol(1, "(") && symbol(2, ")")) return QStringLiteral("@@IDENTITY");
  length = 4;
  if (rest[0].IsWord("SERVERPROPERTY") && symbol(1, "(") && symbol(3, ")"))
    return QStringLiteral("@@") + QString::fromStdString(rest[2].Content());
  return {};
}

/// Whether the token is the "max" of "nvarchar(max)", which SQLite does not know.
bool IsNoLimit(Tokens statement, std::size_t i) {
  return statement[i].IsWord("MAX") && i > 0 && i + 1 < statement.size() && statement[i - 1].IsSymbol("(") &&
         statement[i + 1].IsSymbol(")");
}

}  // namespace

std::vector<Tokens> CutBatch(const std::vector<Token>& tokens) {
  std::vector<Tokens> statements;
  for (Tokens statement : SplitStatements(tokens)) {
    while (SetsOption(statement)) {
      const std::size_t end = EndOfOption(statement);
      statements.push_back(statement.first(end));
      statement = statement.subspan(end);
      if (statement.empty()) break;
    }
    if (!statement.empty()) statements.push_back(statement);
  }
  return statements;
}

bool SetsOption(Tokens statement) {
  return !statement.empty() && statement[0].IsWord("SET") && statement.size() > 1 &&
         statement[1].kind != TokenKind::kParameter;
}

QString Rewritten(Tokens statement, const ValueOf& valueOf) {
  const bool isCall = KindOf(statement) == StatementKind::kCall;
  QString text;
  for (std::size_t i = 0; i < statement.size(); ++i) {
    const Token& token = statement[i];
    const bool namesArgument = isCall && i + 1 < statement.size() && statement[i + 1].IsSymbol("=");
    std::size_t length = 1;
    QString asked = token.kind == TokenKind::kWord ? AskedOfServer(statement.subspan(i), length) : QString();
    if (token.kind == TokenKind::kParameter && !namesArgument) {
      asked = TextOf(token);
      length = 1;
    }
    if (!text.isEmpty()) text += u' ';
    if (asked.isEmpty()) {
      text += IsNoLimit(statement, i)    ? QStringLiteral("-1")
              : JoinsTexts(statement, i) ? QStringLiteral("||")
                                         : TextOf(token);
      continue;
    }
    const std::optional<Value> value = valueOf(asked);
    if (!value) throw ServerError(137, QStringLiteral("Must declare the scalar variable \"%1\".").arg(asked));
    text += Literal(*value);
    i += length - 1;
  }
  return text;
}

}  // namespace qbx::tds
