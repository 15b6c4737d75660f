// The time, as something that a test can set.

#pragma once

#include <QDateTime>

namespace qbx {

/// Local date and time. Everything that the program writes, compares or merges as "now" comes from here.
class Clock {
 public:
  virtual ~Clock() = default;
  [[nodiscard]] virtual QDateTime Now() const = 0;
  [[nodiscard]] QDate Today() const { return Now().date(); }
};

/// The computer's clock.
class SystemClock final : public Clock {
 public:
  [[nodiscard]] QDateTime Now() const override { return QDateTime::currentDateTime(); }
};

}  // namespace qbx
