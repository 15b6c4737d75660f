// Failures of the embedded engine, in the server's words.

#pragma once

#include <QString>

#include "database/database_error.h"
#include "sqlite/sqlite_file.h"

namespace qbx {

/// Why the engine itself stopped a running statement.
enum class StopReason { kNone, kTimeout, kCancelled };

/// Where an SQLite call failed.
struct FailureContext {
  QString database = {};   ///< the database's name
  QString file = {};       ///< the database's file
  QString statement = {};  ///< the failed statement; may be empty
  StopReason stopped = StopReason::kNone;
};

/// An error of the server. In the provider's list the description gets the source prefix. A violated constraint is
/// followed by the notice that the statement has been terminated.
[[nodiscard]] DatabaseError ServerError(int number, const QString& description, const QString& sqlState = {});

/// The message for a file that SQLite cannot read as a database.
[[nodiscard]] QString NoDatabaseText(const QString& file);

/// A failure of SQLite as an error of the server.
[[nodiscard]] DatabaseError ErrorFromSqlite(const SqliteFailure& failure, const FailureContext& context);

}  // namespace qbx
