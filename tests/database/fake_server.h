// A database server that answers from a script.

#pragma once

#include <QStringList>
#include <deque>
#include <optional>

#include "database/connection.h"
#include "database/session.h"

namespace qbx::test {

/// What the server does when it is asked: gives rows, fails, or neither.
struct Answer {
  std::vector<Column> columns;
  std::vector<std::vector<Value>> rows;
  std::optional<DatabaseError> error;
};

[[nodiscard]] Answer Rows(std::vector<Column> columns, std::vector<std::vector<Value>> rows);
/// One row with one column.
[[nodiscard]] Answer Single(const Value& value);
/// A failure whose provider list holds one entry with the same text.
[[nodiscard]] Answer Failure(const QString& description, int number = kStatementFailed);
[[nodiscard]] Answer Lost();

/// Succeeds without rows where the script says nothing. Everything that reached it is in `calls`: "open database
/// user/password timeout", statements as sent, "call procedure name=value ...".
class FakeServer {
 public:
  QStringList calls;
  std::deque<std::optional<DatabaseError>> opens;  ///< outcomes of the next opens
  std::vector<Parameter> parameters;               ///< what every procedure is described with
  std::optional<DatabaseError> describeError;

  /// The next statement or call that holds `part` gets this answer.
  void Expect(const QString& part, Answer answer) { answers_.push_back({part, std::move(answer)}); }
  [[nodiscard]] SessionFactory Factory();
  [[nodiscard]] std::unique_ptr<RowSource> Reply(const QString& call);
  [[nodiscard]] qsizetype Count(const QString& part) const { return calls.filter(part).size(); }

 private:
  struct Expected {
    QString part;
    Answer answer;
  };
  std::deque<Expected> answers_;
};

}  // namespace qbx::test
