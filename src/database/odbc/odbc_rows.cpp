#include "database/odbc/odbc_rows.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstring>

namespace qbx {
namespace {

constexpr SQLULEN kLongestBoundText = 4000;  // UTF-16 units
constexpr SQLLEN kDecimalBytes = 64;
constexpr std::size_t kPieceUnits = 32768;
constexpr std::size_t kBytesOfUnit = 3;  // at most, in UTF-8
constexpr std::size_t kAlignment = 8;
constexpr qint64 kMillisecondsOfDay = 86'400'000;

bool IsShortText(SQLSMALLINT sqlType, SQLULEN size) {
  const bool text = sqlType == SQL_CHAR || sqlType == SQL_VARCHAR || sqlType == SQL_WCHAR || sqlType == SQL_WVARCHAR;
  return text && size > 0 && size <= kLongestBoundText;
}

/// "-12.50" as -1250 with a scale of 2. A number with too many digits becomes a floating-point number.
Cell DecimalCell(std::string_view text) {
  constexpr std::size_t kLongestScale = 15;
  Cell cell;
  std::array<char, kDecimalBytes> digits = {};
  const std::size_t point = text.find('.');
  const std::size_t scale = point == std::string_view::npos ? 0 : text.size() - point - 1;
  const auto end = std::copy_if(text.begin(), text.end(), digits.begin(), [](char sign) { return sign != '.'; });
  const char* const last = digits.data() + (end - digits.begin());
  const auto [stopped, problem] = std::from_chars(digits.data(), last, cell.integer);
  if (problem == std::errc() && stopped == last && scale <= kLongestScale) {
    cell.type = ValueType::kDecimal;
    cell.scale = static_cast<quint8>(scale);
    return cell;
  }
  cell = {};
  cell.type = ValueType::kDouble;
  std::from_chars(text.data(), text.data() + text.size(), cell.real);
  return cell;
}

/// Days since 1970-01-01, in the Gregorian calendar.
qint64 DaysOf(const SQL_TIMESTAMP_STRUCT& moment) {
  const qint64 year =
      moment.year - (moment.month <= 2 ? 1 : 0);  // a year begins in March here, so that a leap day is its last day
  const qint64 era = year / 400;
  const qint64 yearOfEra = year - era * 400;
  const qint64 dayOfYear = (153 * (moment.month + (moment.month > 2 ? -3 : 9)) + 2) / 5 + moment.day - 1;
  return era * 146097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719468;
}

qint64 MillisecondsOf(const SQL_TIMESTAMP_STRUCT& moment) {
  const qint64 seconds = (moment.hour * 60 + moment.minute) * 60 + moment.second;
  return DaysOf(moment) * kMillisecondsOfDay + seconds * 1000 + moment.fraction / 1'000'000;
}

/// Copies the ASCII characters at the front of a text. Takes four at a time, because most texts are all ASCII.
/// \return how many it copied
std::size_t CopyAscii(const SQLWCHAR* units, std::size_t count, char* to) {
  constexpr std::size_t kStep = 4;
  std::size_t at = 0;
  if constexpr (std::endian::native == std::endian::little) {
    for (; at + kStep <= count; at += kStep) {
      quint64 four = 0;
      std::memcpy(&four, units + at, sizeof(four));
      if ((four & 0xFF80FF80FF80FF80U) != 0) break;
      four = (four | four >> 8U) & 0x0000FFFF0000FFFFU;
      const auto bytes = static_cast<quint32>(four | four >> 16U);
      std::memcpy(to + at, &bytes, sizeof(bytes));
    }
  }
  for (; at < count && units[at] < 0x80; ++at)
    to[at] = static_cast<char>(units[at]);
  return at;
}

template <typename Type>
Type As(const std::byte* place) {
  Type value;
  std::memcpy(&value, place, sizeof(value));
  return value;
}

}  // namespace

ValueType TypeOfSqlType(SQLSMALLINT sqlType) {
  switch (sqlType) {
    case SQL_BIT:
      return ValueType::kBool;
    case SQL_TINYINT:
    case SQL_SMALLINT:
    case SQL_INTEGER:
    case SQL_BIGINT:
      return ValueType::kInt;
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
      return ValueType::kDouble;
    case SQL_DECIMAL:
    case SQL_NUMERIC:
      return ValueType::kDecimal;
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
    case SQL_DATE:
    case SQL_TIMESTAMP:
      return ValueType::kDateTime;
    default:
      return ValueType::kText;
  }
}

OdbcRows::OdbcRows(const OdbcHandle& statement, bool anywhere) : statement_(statement) {
  SQLSMALLINT count = 0;
  if (!SQL_SUCCEEDED(::SQLNumResultCols(statement.Get(), &count))) Fail();
  for (SQLSMALLINT number = 1; number <= count; ++number)
    Describe(static_cast<SQLUSMALLINT>(number));
  cells_.resize(columns_.size());
  Bind(anywhere);
}

OdbcRows::~OdbcRows() {
  ::SQLFreeStmt(statement_.Get(), SQL_UNBIND);  // the next result of the statement has other columns
}

void OdbcRows::Describe(SQLUSMALLINT number) {
  std::array<SQLWCHAR, 256> name = {};
  SQLSMALLINT length = 0;
  SQLSMALLINT type = 0;
  SQLULEN size = 0;
  SQLSMALLINT scale = 0;
  SQLSMALLINT nullable = 0;
  if (!SQL_SUCCEEDED(::SQLDescribeColW(statement_.Get(), number, name.data(), static_cast<SQLSMALLINT>(name.size()),
                                       &length, &type, &size, &scale, &nullable)))
    Fail();
  const auto nameLength = std::min<qsizetype>(length, static_cast<qsizetype>(name.size()) - 1);
  Column column = {.name = QString::fromUtf16(reinterpret_cast<const char16_t*>(name.data()), nameLength),
                   .type = TypeOfSqlType(type)};
  Place place;
  switch (column.type) {
    case ValueType::kBool:
    case ValueType::kInt:
      place = {.cType = SQL_C_SBIGINT, .bytes = sizeof(qint64)};
      break;
    case ValueType::kDouble:
      place = {.cType = SQL_C_DOUBLE, .bytes = sizeof(double)};
      break;
    case ValueType::kDecimal:
      place = {.cType = SQL_C_CHAR, .bytes = kDecimalBytes};
      column.precision = static_cast<int>(size);
      column.scale = scale;
      break;
    case ValueType::kDateTime:
      place = {.cType = SQL_C_TYPE_TIMESTAMP, .bytes = sizeof(SQL_TIMESTAMP_STRUCT)};
      column.precision = static_cast<int>(size);
      break;
    default:
      if (!IsShortText(type, size)) break;
      column.size = static_cast<int>(size);
      place.bytes = static_cast<SQLLEN>((size + 1) * sizeof(SQLWCHAR));
  }
  columns_.push_back(std::move(column));
  places_.push_back(std::move(place));
}

void OdbcRows::Bind(bool anywhere) {
  std::size_t size = 0;
  bool behindLong = false;
  for (Place& place : places_) {
    behindLong = behindLong || place.bytes == 0;
    place.bound = place.bytes > 0 && (anywhere || !behindLong);
    place.offset = size;
    size += (static_cast<std::size_t>(place.bytes) + kAlignment - 1) / kAlignment * kAlignment;
  }
  row_.resize(size);
  for (std::size_t column = 0; column < places_.size(); ++column) {
    Place& place = places_[column];
    if (place.bound && !SQL_SUCCEEDED(::SQLBindCol(statement_.Get(), static_cast<SQLUSMALLINT>(column + 1), place.cType,
                                                   row_.data() + place.offset, place.bytes, &place.length)))
      Fail();
  }
}

bool OdbcRows::Next() {
  const SQLRETURN fetched = ::SQLFetch(statement_.Get());
  if (fetched == SQL_NO_DATA) return false;
  if (!SQL_SUCCEEDED(fetched)) Fail();
  for (std::size_t column = 0; column < columns_.size(); ++column)
    Read(column);
  return true;
}

void OdbcRows::Read(std::size_t column) {
  Place& place = places_[column];
  if (place.bytes == 0) return ReadLongText(column);
  if (!place.bound && !SQL_SUCCEEDED(::SQLGetData(statement_.Get(), static_cast<SQLUSMALLINT>(column + 1), place.cType,
                                                  row_.data() + place.offset, place.bytes, &place.length)))
    Fail();
  Cell& cell = cells_[column];
  cell = {};
  if (place.length == SQL_NULL_DATA) return;
  const std::byte* const bytes = row_.data() + place.offset;
  cell.type = columns_[column].type;
  switch (cell.type) {
    case ValueType::kBool:
    case ValueType::kInt:
      cell.integer = As<qint64>(bytes);
      break;
    case ValueType::kDouble:
      cell.real = As<double>(bytes);
      break;
    case ValueType::kDateTime:
      cell.integer = MillisecondsOf(As<SQL_TIMESTAMP_STRUCT>(bytes));
      break;
    case ValueType::kDecimal:
      cell = DecimalCell(reinterpret_cast<const char*>(bytes));
      break;
    default:
      PutText(column, reinterpret_cast<const SQLWCHAR*>(bytes),
              static_cast<std::size_t>(place.length) / sizeof(SQLWCHAR));
  }
}

void OdbcRows::PutText(std::size_t column, const SQLWCHAR* units, std::size_t count) {
  std::vector<char>& utf8 = places_[column].utf8;
  if (utf8.size() < count * kBytesOfUnit) utf8.resize(count * kBytesOfUnit);
  const std::size_t at = CopyAscii(units, count, utf8.data());
  std::size_t size = at;
  if (at < count) {
    const QByteArray rest =
        QStringView(reinterpret_cast<const QChar*>(units + at), static_cast<qsizetype>(count - at)).toUtf8();
    std::memcpy(utf8.data() + at, rest.constData(), static_cast<std::size_t>(rest.size()));
    size += static_cast<std::size_t>(rest.size());
  }
  Cell& cell = cells_[column];
  cell.type = ValueType::kText;
  cell.utf8 = {utf8.data(), size};
}

/// Joins the pieces before it converts them to UTF-8, because a piece may end in the middle of a surrogate pair.
void OdbcRows::ReadLongText(std::size_t column) {
  cells_[column] = {};
  for (std::size_t filled = 0;;) {
    if (longText_.size() < filled + kPieceUnits) longText_.resize(filled + kPieceUnits);
    SQLLEN left = 0;
    const auto room = static_cast<SQLLEN>(kPieceUnits * sizeof(SQLWCHAR));
    const SQLRETURN got = ::SQLGetData(statement_.Get(), static_cast<SQLUSMALLINT>(column + 1), SQL_C_WCHAR,
                                       longText_.data() + filled, room, &left);
    if (got == SQL_NO_DATA) return PutText(column, longText_.data(), filled);
    if (!SQL_SUCCEEDED(got)) Fail();
    if (left == SQL_NULL_DATA) return;
    const bool more = left == SQL_NO_TOTAL || left > room - static_cast<SQLLEN>(sizeof(SQLWCHAR));
    filled += more ? kPieceUnits - 1 : static_cast<std::size_t>(left) / sizeof(SQLWCHAR);
    if (!more) return PutText(column, longText_.data(), filled);
  }
}

void OdbcRows::Fail() const {
  throw OdbcFailure{statement_.Records()};
}

}  // namespace qbx
