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

/// Settles the time zone of this process where the environment names none. Without it the C library looks whether the
/// zone's file has changed every time a local time is made. To be called once, first thing in a program; a zone that is
/// chosen for the computer later is seen by the next start.
void SettleTimeZone();

/// The computer's clock.
class SystemClock final : public Clock {
 public:
  [[nodiscard]] QDateTime Now() const override { return QDateTime::currentDateTime(); }
};

}  // namespace qbx
