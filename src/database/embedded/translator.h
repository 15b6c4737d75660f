// Statements written for SQL Server, made into statements that SQLite runs.

#pragma once

#include <QString>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "database/embedded/tokenizer.h"
#include "database/value.h"

namespace qbx {

using Tokens = std::span<const Token>;

/// The statements of a batch, separated by ";". Empty ones are left out.
[[nodiscard]] std::vector<Tokens> SplitStatements(const std::vector<Token>& tokens);

/// What a statement asks for, by its first words.
enum class StatementKind { kSql, kCall, kBegin, kCommit, kRollback, kAlterDatabase };
[[nodiscard]] StatementKind KindOf(Tokens statement);

/// A procedure call written as a statement: `name`, `name ('a')`, `name 50, NULL`, `EXEC name @a = 1`.
struct WrittenCall {
  QString name;
  std::vector<std::pair<QString, Value>> arguments;  ///< the name empty when given by position
};
/// \throws DatabaseError (102)
[[nodiscard]] WrittenCall ParseCall(Tokens statement);

/// `ALTER DATABASE [name] SET ONLINE|OFFLINE`.
struct StatusChange {
  QString database;
  QString status;  ///< in upper case
};
/// \throws DatabaseError (102)
[[nodiscard]] StatusChange ParseStatusChange(Tokens statement);

/// A statement for SQLite; the literals of its conditions and assignments are parameters ?1, ?2, ..., so that
/// statements that differ in those only are one.
struct SqlStatement {
  std::string sql;
  std::vector<Token> literals;  ///< texts and numbers, as written
};
/// Brackets, "dbo.", table hints, TOP, IsNull, N'text' and + between texts are translated, everything else is passed
/// on.
/// \throws DatabaseError (102, 105, 137)
[[nodiscard]] SqlStatement TranslateSql(Tokens statement);

/// The value of a literal.
/// \param negative  a minus stood in front
[[nodiscard]] Value LiteralValue(const Token& literal, bool negative = false);

/// Fails as the server does at this token.
/// \throws DatabaseError (102)
[[noreturn]] void ThrowSyntaxError(std::string_view near);

}  // namespace qbx
