#include "database/odbc/odbc_rows.h"

#include <algorithm>
#include <array>

namespace qbx {
namespace {

constexpr std::size_t kPieceUnits = 4096;

ValueType TypeOf(SQLSMALLINT sqlType) {
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
      return ValueType::kDateTime;
    default:
      return ValueType::kText;
  }
}

/// "-12.50" as -1250 with a scale of 2.
Cell DecimalCell(const QByteArray& text) {
  Cell cell;
  cell.type = ValueType::kDecimal;
  const qsizetype point = text.indexOf('.');
  QByteArray digits = text;
  if (point >= 0) {
    cell.scale = static_cast<quint8>(text.size() - point - 1);
    digits.remove(point, 1);
  }
  bool fits = false;
  cell.integer = digits.toLongLong(&fits);
  if (fits) return cell;
  cell = {};
  cell.type = ValueType::kDouble;
  cell.real = text.toDouble();
  return cell;
}

}  // namespace

OdbcRows::OdbcRows(const OdbcHandle& statement) : statement_(statement) {
  SQLSMALLINT count = 0;
  if (!SQL_SUCCEEDED(::SQLNumResultCols(statement.Get(), &count))) Fail();
  for (SQLSMALLINT number = 1; number <= count; ++number)
    Describe(static_cast<SQLUSMALLINT>(number));
  cells_.resize(columns_.size());
  texts_.resize(static_cast<std::size_t>(columns_.size()));
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
                   .type = TypeOf(type)};
  if (column.type == ValueType::kText) column.size = static_cast<int>(size);
  if (column.type == ValueType::kDecimal || column.type == ValueType::kDateTime)
    column.precision = static_cast<int>(size);
  if (column.type == ValueType::kDecimal) column.scale = scale;
  columns_.push_back(std::move(column));
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
  Cell& cell = cells_[column];
  const ValueType type = columns_[column].type;
  cell = {};
  cell.type = type;
  switch (type) {
    case ValueType::kBool:
    case ValueType::kInt:
      if (!Get(column, SQL_C_SBIGINT, &cell.integer, sizeof(cell.integer))) cell = {};
      break;
    case ValueType::kDouble:
      if (!Get(column, SQL_C_DOUBLE, &cell.real, sizeof(cell.real))) cell = {};
      break;
    case ValueType::kDateTime:
      ReadMoment(column);
      break;
    case ValueType::kDecimal: {
      std::array<char, 64> text = {};
      if (Get(column, SQL_C_CHAR, text.data(), static_cast<SQLLEN>(text.size())))
        cell = DecimalCell(QByteArray(text.data()));
      else
        cell = {};
      break;
    }
    default:
      ReadText(column);
  }
}

bool OdbcRows::Get(std::size_t column, SQLSMALLINT type, SQLPOINTER target, SQLLEN size) {
  SQLLEN indicator = 0;
  const auto number = static_cast<SQLUSMALLINT>(column + 1);
  if (!SQL_SUCCEEDED(::SQLGetData(statement_.Get(), number, type, target, size, &indicator))) Fail();
  return indicator != SQL_NULL_DATA;
}

void OdbcRows::ReadMoment(std::size_t column) {
  SQL_TIMESTAMP_STRUCT read = {};
  if (!Get(column, SQL_C_TYPE_TIMESTAMP, &read, sizeof(read))) {
    cells_[column] = {};
    return;
  }
  const QTime time(read.hour, read.minute, read.second, static_cast<int>(read.fraction / 1'000'000));
  cells_[column].integer = QDateTime(QDate(read.year, read.month, read.day), time, Qt::UTC).toMSecsSinceEpoch();
}

/// A piece may end in the middle of a pair of surrogates: the pieces are joined before they become UTF-8.
void OdbcRows::ReadText(std::size_t column) {
  std::array<SQLWCHAR, kPieceUnits> piece = {};
  QString text;
  for (;;) {
    SQLLEN indicator = 0;
    const SQLRETURN got = ::SQLGetData(statement_.Get(), static_cast<SQLUSMALLINT>(column + 1), SQL_C_WCHAR,
                                       piece.data(), static_cast<SQLLEN>(sizeof(piece)), &indicator);
    if (got == SQL_NO_DATA) break;
    if (!SQL_SUCCEEDED(got)) Fail();
    if (indicator == SQL_NULL_DATA) {
      cells_[column] = {};
      return;
    }
    const auto room = static_cast<SQLLEN>(kPieceUnits - 1);
    const auto left = static_cast<SQLLEN>(indicator / static_cast<SQLLEN>(sizeof(SQLWCHAR)));
    const bool more = indicator == SQL_NO_TOTAL || left > room;
    text.append(reinterpret_cast<const QChar*>(piece.data()), static_cast<qsizetype>(more ? room : left));
    if (!more) break;
  }
  texts_[column] = text.toUtf8();
  cells_[column].utf8 = {texts_[column].constData(), static_cast<std::size_t>(texts_[column].size())};
}

void OdbcRows::Fail() const {
  throw FailureOfCall(statement_.Records(), false);
}

}  // namespace qbx
