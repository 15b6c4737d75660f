#include "database/embedded/foreign_keys.h"

#include <sqlite3.h>

#include <optional>

#include "database/embedded/errors.h"
#include "database/embedded/prepared.h"
#include "database/embedded/tokenizer.h"

namespace qbx {
namespace {

struct Violation {
  QString child;
  QString childColumn;
  QString parent;
  QString parentColumn;
};

struct Target {
  QString verb;  ///< INSERT, UPDATE or DELETE
  QString table;
};

Target TargetOf(std::string_view sql) {
  std::vector<Token> tokens;
  Tokenize(sql, tokens);
  Target target;
  for (const Token& token : tokens) {
    const bool verb =
        token.IsWord("INSERT") || token.IsWord("UPDATE") || token.IsWord("DELETE") || token.IsWord("REPLACE");
    const bool filler = token.IsWord("INTO") || token.IsWord("FROM") || token.IsWord("OR") || token.IsWord("IGNORE");
    if (target.verb.isEmpty()) {
      if (verb) target.verb = QString::fromStdString(token.Content()).toUpper();
    } else if (!verb && !filler && (token.kind == TokenKind::kWord || token.kind == TokenKind::kQuoted)) {
      target.table = QString::fromStdString(token.Content());
      break;
    }
  }
  if (target.verb == QLatin1String("REPLACE")) target.verb = QStringLiteral("INSERT");
  return target;
}

QString Text(const SqliteStatement& statement, int column) {
  return QString::fromUtf8(statement.TextAt(column));
}

/// Reads the columns of one foreign key of a table.
void ReadColumns(sqlite3* database, int key, Violation& violation) {
  SqliteStatement list(database, "SELECT \"from\", \"to\" FROM pragma_foreign_key_list(?1) WHERE id = ?2 ORDER BY seq");
  if (!list.Add(violation.child.toStdString()).Add(qint64{key}).Step()) return;
  violation.childColumn = Text(list, 0);
  violation.parentColumn = Text(list, 1);
  if (violation.parentColumn.isEmpty()) violation.parentColumn = violation.childColumn;
}

/// Nothing when the foreign key cannot be found out. The failure is then reported without names.
std::optional<Violation> FindViolation(sqlite3* database) {
  try {
    SqliteStatement check(database, "PRAGMA foreign_key_check");
    if (!check.Step()) return std::nullopt;
    Violation found{Text(check, 0), {}, Text(check, 2), {}};
    ReadColumns(database, static_cast<int>(check.IntegerAt(3)), found);
    return found;
  } catch (const SqliteFailure&) {
    return std::nullopt;
  }
}

/// Defers the check of foreign keys while it exists, and at its end undoes everything that was run.
class Rehearsal {
 public:
  explicit Rehearsal(sqlite3* database) : database_(database) {
    TryExecuteSql(database_, "SAVEPOINT qbx_rehearsal; PRAGMA defer_foreign_keys = ON");
  }
  ~Rehearsal() {
    TryExecuteSql(database_, "ROLLBACK TO qbx_rehearsal; RELEASE qbx_rehearsal; PRAGMA defer_foreign_keys = OFF");
  }
  Rehearsal(const Rehearsal&) = delete;
  Rehearsal& operator=(const Rehearsal&) = delete;

 private:
  sqlite3* database_;
};

std::optional<Violation> Rehearse(PreparedStatement& statement) {
  sqlite3* database = statement.Database().Handle();
  statement.Statement().Reset();
  const Rehearsal rehearsal(database);
  while (statement.Statement().StepOnly() == SQLITE_ROW) {
  }
  std::optional<Violation> violation = FindViolation(database);
  statement.Statement().Reset();
  return violation;
}

}  // namespace

DatabaseError ForeignKeyError(PreparedStatement& statement) {
  DatabaseError unnamed =
      statement.Database().Error(SQLITE_CONSTRAINT_FOREIGNKEY, QString::fromStdString(statement.Sql()));
  const std::optional<Violation> violation = Rehearse(statement);
  if (!violation) return unnamed;
  const Target target = TargetOf(statement.Sql());
  const QString key = QStringLiteral("FK_%1_%2").arg(violation->child, violation->parent);
  const QString database = statement.Database().Name();
  const bool stillReferred =
      target.verb == QLatin1String("DELETE") ||
      (target.verb == QLatin1String("UPDATE") && target.table.compare(violation->child, Qt::CaseInsensitive) != 0);
  if (stillReferred) {
    return ServerError(
        547,
        QStringLiteral(
            "%1 statement conflicted with COLUMN REFERENCE constraint '%2'. The conflict occurred in database '%3', table '%4', column '%5'.")
            .arg(target.verb, key, database, violation->child, violation->childColumn));
  }
  return ServerError(
      547,
      QStringLiteral(
          "The %1 statement conflicted with the FOREIGN KEY constraint \"%2\". The conflict occurred in database \"%3\", table '%4', column '%5'.")
          .arg(target.verb, key, database, violation->parent, violation->parentColumn));
}

}  // namespace qbx
