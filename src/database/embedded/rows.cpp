#include "database/embedded/rows.h"

#include <sqlite3.h>

#include <cmath>

#include "database/server_errors.h"

namespace qbx {
namespace {

/// Reads a number of exactly `count` digits.
bool Digits(std::string_view text, std::size_t at, std::size_t count, int& number) {
  if (text.size() < at + count) return false;
  number = 0;
  for (std::size_t i = at; i < at + count; ++i) {
    if (text[i] < '0' || text[i] > '9') return false;
    number = number * 10 + (text[i] - '0');
  }
  return true;
}

/// Days from 1970-01-01 in the Gregorian calendar.
qint64 DaysFromCivil(int year, int month, int day) {
  const int y = month <= 2 ? year - 1 : year;
  const int era = y / 400;
  const int yearOfEra = y - era * 400;
  const int dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  return qint64{era} * 146097 + qint64{yearOfEra} * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719468;
}

bool ParseTime(std::string_view text, qint64& milliseconds) {
  int hour = 0;
  int minute = 0;
  int second = 0;
  if (!Digits(text, 0, 2, hour) || text.size() < 5 || text[2] != ':' || !Digits(text, 3, 2, minute)) return false;
  if (text.size() > 5 && (text[5] != ':' || !Digits(text, 6, 2, second))) return false;
  if (hour > 23 || minute > 59 || second > 59) return false;
  int fraction = 0;
  if (text.size() > 8) {
    if (text[8] != '.') return false;
    int scale = 100;
    for (std::size_t i = 9; i < text.size(); ++i, scale /= 10) {
      if (text[i] < '0' || text[i] > '9') return false;
      fraction += (text[i] - '0') * scale;
    }
  }
  milliseconds = ((hour * 60 + minute) * 60 + second) * qint64{1000} + fraction;
  return true;
}

void ReadText(sqlite3_value* value, Cell& cell) {
  cell.type = ValueType::kText;
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
  if (text != nullptr) cell.utf8 = {text, static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

void ReadStored(sqlite3_value* value, int storage, Cell& cell) {
  switch (storage) {
    case SQLITE_INTEGER:
      cell.type = ValueType::kInt;
      cell.integer = sqlite3_value_int64(value);
      break;
    case SQLITE_FLOAT:
      cell.type = ValueType::kDouble;
      cell.real = sqlite3_value_double(value);
      break;
    default:
      ReadText(value, cell);
  }
}

void ReadDate(sqlite3_value* value, Cell& cell) {
  ReadText(value, cell);
  if (cell.utf8.empty()) {
    cell.type = ValueType::kNull;
  } else if (ParseDateTime(cell.utf8, cell.integer)) {
    cell.type = ValueType::kDateTime;
  }
}

void ReadNumber(sqlite3_value* value, int storage, ColumnReading reading, Cell& cell) {
  cell.type = reading.type;
  switch (reading.type) {
    case ValueType::kDouble:
      cell.real = sqlite3_value_double(value);
      break;
    case ValueType::kDecimal:
      cell.scale = reading.scale;
      cell.integer = storage == SQLITE_INTEGER
                         ? sqlite3_value_int64(value) * static_cast<qint64>(PowerOfTen(reading.scale))
                         : std::llround(sqlite3_value_double(value) * PowerOfTen(reading.scale));
      break;
    default:
      if (storage == SQLITE_FLOAT) return ReadStored(value, storage, cell);
      cell.integer = sqlite3_value_int64(value);
  }
}

}  // namespace

bool ParseDateTime(std::string_view text, qint64& milliseconds) {
  int year = 0;
  int month = 0;
  int day = 0;
  if (!Digits(text, 0, 4, year) || text.size() < 10 || text[4] != '-' || text[7] != '-') return false;
  if (!Digits(text, 5, 2, month) || !Digits(text, 8, 2, day) || !QDate::isValid(year, month, day)) return false;
  qint64 time = 0;
  if (text.size() > 10 && ((text[10] != ' ' && text[10] != 'T') || !ParseTime(text.substr(11), time))) return false;
  milliseconds = DaysFromCivil(year, month, day) * 86'400'000 + time;
  return true;
}

SqliteRows::SqliteRows(StatementLease lease, bool stepped, bool atRow)
    : lease_(std::move(lease)), readings_(lease_->Readings()), stepped_(stepped), atRow_(atRow) {}

bool SqliteRows::Next() {
  if (stepped_) {
    stepped_ = false;
    return atRow_;
  }
  SqliteDatabase& database = lease_->Database();
  if (database.Lost()) throw LostConnectionError();
  database.RenewTime();
  return lease_.Step();
}

Cell SqliteRows::At(int column) const {
  Cell cell;
  sqlite3_value* value = sqlite3_column_value(lease_->Handle(), column);
  const int storage = sqlite3_value_type(value);
  if (storage == SQLITE_NULL) return cell;
  const ColumnReading reading = readings_[static_cast<std::size_t>(column)];
  if (reading.type == ValueType::kText) {
    ReadText(value, cell);
  } else if (reading.type == ValueType::kDateTime) {
    ReadDate(value, cell);
  } else if (reading.type == ValueType::kNull || storage == SQLITE_TEXT || storage == SQLITE_BLOB) {
    ReadStored(value, storage, cell);
  } else {
    ReadNumber(value, storage, reading, cell);
  }
  return cell;
}

}  // namespace qbx
