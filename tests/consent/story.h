// The events of a round, and its faults.

#pragma once

#include <QStringList>

namespace qbx::consent {

/// Lines for a person who has to find out what went wrong. Only a round that fails shows them.
class Story {
 public:
  void Tell(const QString& line) { lines_ += line; }
  /// Records a broken rule. The round ends at its next step.
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
