#include "database/embedded/errors.h"

#include <sqlite3.h>

#include <QRegularExpression>
#include <optional>

#include "database/server_errors.h"

namespace qbx {
namespace {

const QString kPrefix = QStringLiteral("[SQL Server]");

enum ServerNumber {
  kTimeoutNumber = -2,
  kSyntax = 102,
  kUnclosedQuote = 105,
  kArgumentCount = 174,
  kUnknownFunction = 195,
  kMissingParameter = 201,
  kInvalidColumn = 207,
  kInvalidObject = 208,
  kNullNotAllowed = 515,
  kConflict = 547,
  kOutOfMemory = 701,
  kInputOutput = 823,
  kDamaged = 824,
  kDiskFull = 1105,
  kDuplicateIndexRow = 2601,
  kDuplicateKey = 2627,
  kTerminated = 3621,
  kReadOnly = 3906,
  kNoDatabaseFile = 5171,
  kTruncated = 8152,
  kLoginFailed = 18456,
  kUserError = 50000,
};

QString DefaultState(int number) {
  if (IsConstraintNumber(number)) return QStringLiteral("23000");
  switch (number) {
    case kTimeoutNumber:
      return QStringLiteral("HYT00");
    case kInvalidObject:
      return QStringLiteral("42S02");
    case kInvalidColumn:
      return QStringLiteral("42S22");
    case kTruncated:
      return QStringLiteral("22001");
    case kLoginFailed:
      return QStringLiteral("28000");
    default:
      return QStringLiteral("42000");
  }
}

/// A failure on the client's side, which has no number of the server.
DatabaseError ClientError(int pending, const QString& state, const QString& text) {
  return DatabaseError(pending, text, {{0, state, kPrefix + text}});
}

DatabaseError UniqueError(int code, const QString& detail) {
  const QString table = detail.section(QLatin1Char('.'), 0, 0).section(QLatin1Char(','), 0, 0).trimmed();
  if (code == SQLITE_CONSTRAINT_PRIMARYKEY || code == SQLITE_CONSTRAINT_ROWID) {
    return ServerError(
        kDuplicateKey,
        QStringLiteral("Violation of PRIMARY KEY constraint 'PK_%1'. Cannot insert duplicate key in object '%1'.")
            .arg(table));
  }
  const QString name =
      QString(detail).remove(table + QLatin1Char('.')).replace(QStringLiteral(", "), QStringLiteral("_"));
  return ServerError(
      kDuplicateIndexRow,
      QStringLiteral("Cannot insert duplicate key row in object '%1' with unique index 'IX_%1_%2'.").arg(table, name));
}

QString Verb(const QString& statement) {
  const QString word = statement.trimmed().section(QRegularExpression(QStringLiteral("\\s")), 0, 0).toUpper();
  return word == QLatin1String("REPLACE") || word.isEmpty() ? QStringLiteral("INSERT") : word;
}

DatabaseError ConstraintError(int code, const QString& message, const FailureContext& context) {
  const QString detail = message.section(QStringLiteral("constraint failed: "), 1);
  switch (code) {
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
    case SQLITE_CONSTRAINT_UNIQUE:
      return UniqueError(code, detail);
    case SQLITE_CONSTRAINT_NOTNULL:
      return ServerError(
          kNullNotAllowed,
          QStringLiteral(
              "Cannot insert the value NULL into column '%1', table '%2.dbo.%3'; column does not allow nulls. %4 fails.")
              .arg(detail.section(QLatin1Char('.'), 1), context.database, detail.section(QLatin1Char('.'), 0, 0),
                   Verb(context.statement)));
    case SQLITE_CONSTRAINT_CHECK:
      return ServerError(
          kConflict,
          QStringLiteral("%1 statement conflicted with CHECK constraint '%2'. The conflict occurred in database '%3'.")
              .arg(Verb(context.statement), detail, context.database));
    case SQLITE_CONSTRAINT_TRIGGER:
      return ServerError(kUserError, message);
    default:
      return ServerError(kConflict, message);
  }
}

struct Wording {
  const char* pattern;  // matches SQLite's message; group 1 is the name
  int number;
  const char* text;
};

constexpr Wording kWordings[] = {
    {"^no such table: (?:main\\.)?(.*)$", kInvalidObject, "Invalid object name '%1'."},
    {"^no such column: (.*)$", kInvalidColumn, "Invalid column name '%1'."},
    {"^table .* has no column named (.*)$", kInvalidColumn, "Invalid column name '%1'."},
    {"^near \"(.*)\": syntax error$", kSyntax, "Incorrect syntax near '%1'."},
    {"^(incomplete input)$", kSyntax, "Incorrect syntax near the end of the statement."},
    {"^no such function: (.*)$", kUnknownFunction, "'%1' is not a recognized built-in function name."},
    {"^wrong number of arguments to function (.*)\\(\\)$", kArgumentCount,
     "The %1 function has the wrong number of arguments."},
    {"^unrecognized token: \"(.*)\"?$", kSyntax, "Incorrect syntax near '%1'."},
};

DatabaseError StatementError(const QString& message) {
  static const QRegularExpression kRaised(QStringLiteral("^#(-?\\d+)#(.*)$"),
                                          QRegularExpression::DotMatchesEverythingOption);
  if (const auto raised = kRaised.match(message); raised.hasMatch()) {
    return ServerError(raised.captured(1).toInt(), raised.captured(2));
  }
  for (const Wording& wording : kWordings) {
    const QRegularExpression pattern(QString::fromLatin1(wording.pattern),
                                     QRegularExpression::DotMatchesEverythingOption);
    const auto match = pattern.match(message);
    if (!match.hasMatch()) continue;
    QString text = QString::fromLatin1(wording.text);
    return ServerError(wording.number, text.replace(QStringLiteral("%1"), match.captured(1)));
  }
  return ServerError(kUserError, message);
}

DatabaseError StoppedError(StopReason reason) {
  if (reason == StopReason::kCancelled) {
    return ClientError(kCommandCancelled, QStringLiteral("HY008"), QStringLiteral("Operation cancelled by user"));
  }
  return ServerError(kTimeoutNumber, QStringLiteral("Timeout expired"));
}

/// The error when the file failed; nothing when the statement did.
std::optional<DatabaseError> FileError(int primary, const FailureContext& context) {
  switch (primary) {
    case SQLITE_FULL:
      return ServerError(
          kDiskFull,
          QStringLiteral("Could not allocate space in database '%1' because the disk is full.").arg(context.database));
    case SQLITE_IOERR:
    case SQLITE_CANTOPEN:
      return ServerError(kInputOutput,
                         QStringLiteral("The operating system returned an error during a read or write in file '%1'.")
                             .arg(context.file));
    case SQLITE_CORRUPT:
      return ServerError(
          kDamaged,
          QStringLiteral(
              "The server detected a logical consistency-based I/O error in database '%1': the file '%2' is damaged.")
              .arg(context.database, context.file));
    case SQLITE_NOTADB:
      return ServerError(kNoDatabaseFile, NoDatabaseText(context.file));
    case SQLITE_READONLY:
    case SQLITE_PERM:
      return ServerError(
          kReadOnly,
          QStringLiteral("Failed to update database '%1' because the database is read-only.").arg(context.database));
    case SQLITE_NOMEM:
      return ServerError(kOutOfMemory, QStringLiteral("There is insufficient system memory to run this query."));
    default:
      return std::nullopt;
  }
}

}  // namespace

QString NoDatabaseText(const QString& file) {
  return QStringLiteral("%1 is not a primary database file. It is damaged, or no database at all.").arg(file);
}

DatabaseError ServerError(int number, const QString& description, const QString& sqlState) {
  std::vector<ProviderError> errors{
      {number, sqlState.isEmpty() ? DefaultState(number) : sqlState, kPrefix + description}};
  if (IsConstraintNumber(number) || number == kTruncated) {
    errors.push_back(
        {kTerminated, QStringLiteral("01000"), kPrefix + QStringLiteral("The statement has been terminated.")});
  }
  return DatabaseError(PendingNumber(number), description, std::move(errors));
}

DatabaseError ErrorFromSqlite(const SqliteFailure& failure, const FailureContext& context) {
  const QString message = QString::fromUtf8(failure.what());
  const int code = failure.Code();
  const int primary = code & 0xFF;
  if (context.stopped != StopReason::kNone) return StoppedError(context.stopped);
  if (primary == SQLITE_BUSY || primary == SQLITE_LOCKED) return StoppedError(StopReason::kTimeout);
  if (primary == SQLITE_INTERRUPT) return StoppedError(StopReason::kCancelled);
  if (auto error = FileError(primary, context)) return *error;
  if (primary == SQLITE_CONSTRAINT) return ConstraintError(code, message, context);
  return StatementError(message);
}

}  // namespace qbx
