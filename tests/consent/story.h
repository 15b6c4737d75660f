// What happened in a round, and what was wrong.

#pragma once

#include <QStringList>

namespace qbx::consent {

/// Lines for a person who has to find out what went wrong. Only a round that fails shows them.
class Story {
 public:
  void Tell(const QString& line) { lines_ += line; }
  /// A rule that was broken; the round ends at its next step.
  void Fault(const QString& line) {
    lines_ += QStringLiteral("FAULT: ") + line;
    ++faults_;
  }
  [[nodiscard]] bool Failed() const { return faults_ > 0; }
  [[nodiscard]] const QStringList& Lines() const { return lines_; }

 private:
  QStringList lines_;
  int faults_ = 0;
};

}  // namespace qbx::consent
