// Statements that tests write in the words of the embedded database, for a SQL Server.

#pragma once

#include <QStringList>

namespace qbx::test {

/// The batches that do there what a test asks for: rows with given keys in tables that count their keys, the first rows
/// (LIMIT), texts put together (||), a procedure that is missing, a trigger that refuses a change. All else stays as it
/// is.
[[nodiscard]] QStringList InServerWords(const QString& sql);

}  // namespace qbx::test
