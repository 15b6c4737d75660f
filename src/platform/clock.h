// The time, which tests can set.

#pragma once

#include <QDateTime>

namespace qbx {

/// Local date and time. Whatever the program writes, compares or merges as "now" comes from here.
class Clock {
 public:
  virtual ~Clock() = default;
  [[nodiscard]] virtual QDateTime Now() const = 0;
  [[nodiscard]] QDate Today() const { return Now().date(); }
};

/// Sets the time zone of this process where the environment names none. Otherwise the C library checks the zone's file
/// at every conversion to local time. To be called once, at the start of a program. A zone that is changed later is
/// used from the next start.
void SettleTimeZone();

/// The computer's clock.
class SystemClock final : public Clock {
 public:
  [[nodiscard]] QDateTime Now() const override { return QDateTime::currentDateTime(); }
};

}  // namespace qbx
