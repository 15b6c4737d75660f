// The parts of a date cell.

#pragma once

#include <QDate>

#include "database/session.h"

namespace qbx {

struct CellDate {
  QDate day;
  int milliseconds = 0;  ///< since midnight
};

[[nodiscard]] inline CellDate DateOf(const Cell& cell) {
  constexpr qint64 kDay = 86'400'000;
  const qint64 time = ((cell.integer % kDay) + kDay) % kDay;
  return {QDate(1970, 1, 1).addDays((cell.integer - time) / kDay), static_cast<int>(time)};
}

}  // namespace qbx
