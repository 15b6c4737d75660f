// A clock that a test sets.

#pragma once

#include "platform/clock.h"

namespace qbx::test {

/// Only moves when it is set. Starts at 4 March 2026, 10:20:30 local time (a Wednesday).
class FixedClock final : public Clock {
 public:
  FixedClock() = default;
  explicit FixedClock(QDateTime now) : now_(std::move(now)) {}

  [[nodiscard]] QDateTime Now() const override { return now_; }

  void Set(const QDateTime& now) { now_ = now; }
  void Set(QDate date, QTime time = QTime(10, 20, 30)) { now_ = QDateTime(date, time); }
  void AdvanceSeconds(qint64 seconds) { now_ = now_.addSecs(seconds); }
  void AdvanceDays(qint64 days) { now_ = now_.addDays(days); }

 private:
  QDateTime now_ = QDateTime(QDate(2026, 3, 4), QTime(10, 20, 30));
};

}  // namespace qbx::test
