// Turns a batch of the program into one that the server accepts.

#pragma once

#include <QString>

namespace qbx {

/// How a batch is sent.
enum class BatchKind {
  kRead,        ///< one SELECT: the caller may step through its rows, and stop before the end
  kOne,         ///< one other statement, or a batch to send unprepared
  kStatements,  ///< several statements that read or change rows or call procedures; reports the errors of all of them
};

struct BatchText {
  QString text;
  BatchKind kind = BatchKind::kOne;
};

/// Writes calls such as "proc_x (1, 'a')", "proc_x 50" and "sp_helpfile" as EXEC statements. Marks a text in quotes as
/// Unicode when it has a character beyond ASCII. Keeps a "\" at the end of a line of a text, except in calls.
[[nodiscard]] BatchText ServerBatch(const QString& batch);

/// A name in brackets, as statements need it.
[[nodiscard]] QString BracketedName(const QString& name);

}  // namespace qbx
