// A batch as the program writes it, made into one that the server takes.

#pragma once

#include <QString>

namespace qbx {

/// How a batch is sent.
enum class BatchKind {
  kRead,        ///< one SELECT: its rows may be stepped, and given up half way
  kOne,         ///< one statement, or what has to be sent as it is
  kStatements,  ///< several that read or change rows, or call procedures: the errors of all of them are wanted
};

struct BatchText {
  QString text;
  BatchKind kind = BatchKind::kOne;
};

/// Calls that are written as statements, "proc_x (1, 'a')", "proc_x 50" or "sp_helpfile", get the word and the form that
/// the server wants. A text in quotes with a character that is not in every code page is marked as Unicode.
[[nodiscard]] BatchText ServerBatch(const QString& batch);

/// A name in brackets.
[[nodiscard]] QString BracketedName(const QString& name);

}  // namespace qbx
