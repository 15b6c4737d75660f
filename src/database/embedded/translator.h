// Translates statements written for SQL Server into statements for SQLite.

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

/// The statements of a batch, separated by ";", without empty ones.
[[nodiscard]] std::vector<Tokens> SplitStatements(const std::vector<Token>& tokens);

/// The kind of a statement, by its first words.
enum class StatementKind { kSql, kCall, kBegin, kCommit, kRollback, kAlterDatabase };
[[nodiscard]] StatementKind KindOf(Tokens statement);

/// A procedure call written as a statement: `name`, `name ('a')`, `name 50, NULL`, `EXEC name @a = 1`.
struct WrittenCall {
  QString name;
  std::vector<std::pair<QString, Value>> arguments;  ///< the name is empty for an argument given by position
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

/// A statement for SQLite. The literals in its conditions and assignments become parameters ?1, ?2, ..., so that
/// statements that differ only in their values have the same text.
struct SqlStatement {
  std::string sql;
  std::vector<Token> literals;  ///< texts and numbers as they are written
};
/// Translates brackets, "dbo.", table hints, TOP, IsNull, N'text' and + between texts. Everything else stays as it is.
/// \throws DatabaseError (102, 105, 137)
[[nodiscard]] SqlStatement TranslateSql(Tokens statement);

/// The value of a literal.
/// \param negative  whether a minus stands before it
[[nodiscard]] Value LiteralValue(const Token& literal, bool negative = false);

/// Throws the server's error for a token that must not stand there.
/// \throws DatabaseError (102)
[[noreturn]] void ThrowSyntaxError(std::string_view near);

}  // namespace qbx
