// Failures of the embedded engine, worded as the server it plays words them.

#pragma once

#include <QString>

#include "database/database_error.h"
#include "sqlite/sqlite_file.h"

namespace qbx {

/// Why a running statement was stopped by the engine itself.
enum class StopReason { kNone, kTimeout, kCancelled };

/// What stood around a failing SQLite call.
struct FailureContext {
  QString database = {};   ///< its name
  QString file = {};       ///< its file
  QString statement = {};  ///< the failing statement, may be empty
  StopReason stopped = StopReason::kNone;
};

/// An error of the server: the description gets the source prefix in the provider's list. A violated constraint is
/// followed by the notice that the statement has been terminated.
[[nodiscard]] DatabaseError ServerError(int number, const QString& description, const QString& sqlState = {});

/// The words for a file that SQLite cannot read as a database.
[[nodiscard]] QString NoDatabaseText(const QString& file);

/// A failure of SQLite as the server's error. Violated foreign keys need their names: see
/// foreign_keys.h.
[[nodiscard]] DatabaseError ErrorFromSqlite(const SqliteFailure& failure, const FailureContext& context);

}  // namespace qbx
