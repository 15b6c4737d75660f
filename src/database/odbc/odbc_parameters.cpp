#include "database/odbc/odbc_parameters.h"

namespace qbx {
namespace {

constexpr qsizetype kLongestShortText = 4000;  // UTF-16 units; a longer text has the type without a limit
constexpr SQLULEN kMomentSize = 27;
constexpr SQLSMALLINT kMomentScale = 3;
constexpr SQLULEN kDecimalDigits = 19;

bool IsNumber(ValueType type) {
  return type == ValueType::kInt || type == ValueType::kDouble || type == ValueType::kDecimal;
}

/// The value, converted to the declared type. The server converts a text to a number.
Value Converted(const Value& value, ValueType declared) {
  if (value.IsNull() || value.Type() == declared) return value;
  const bool isText = value.Type() == ValueType::kText;
  if (declared == ValueType::kDateTime) {
    const QDateTime when = value.ToDateTime();
    if (when.isValid()) return when;
    return isText && !value.ToText().trimmed().isEmpty() ? value : Value();
  }
  if (declared == ValueType::kText) return value.ToText();
  if (isText) return value;
  if (declared == ValueType::kBool) return value.ToDouble() != 0;
  if (declared == ValueType::kInt && IsNumber(value.Type())) return value.ToInt();
  return value;
}

}  // namespace

void OdbcParameters::Add(const Value& given, ValueType declared) {
  const Value value = Converted(given, declared);
  Item& item = items_.emplace_back();
  PutType(item, value.IsNull() ? declared : value.Type());
  if (!value.IsNull()) PutValue(item, value);
}

void OdbcParameters::PutType(Item& item, ValueType type) {
  switch (type) {
    case ValueType::kBool:
      item.cType = SQL_C_SBIGINT;
      item.sqlType = SQL_BIT;
      break;
    case ValueType::kInt:
      item.cType = SQL_C_SBIGINT;
      item.sqlType = SQL_BIGINT;
      item.size = kDecimalDigits;
      break;
    case ValueType::kDouble:
      item.cType = SQL_C_DOUBLE;
      item.sqlType = SQL_DOUBLE;
      item.size = 15;
      break;
    case ValueType::kDecimal:
      item.sqlType = SQL_DECIMAL;
      item.size = kDecimalDigits;
      break;
    case ValueType::kDateTime:
      item.cType = SQL_C_TYPE_TIMESTAMP;
      item.sqlType = SQL_TYPE_TIMESTAMP;
      item.size = kMomentSize;
      item.scale = kMomentScale;
      break;
    default:
      break;
  }
}

void OdbcParameters::PutValue(Item& item, const Value& value) {
  switch (value.Type()) {
    case ValueType::kBool:
    case ValueType::kInt:
      item.integer = value.ToInt();
      item.length = sizeof(item.integer);
      break;
    case ValueType::kDouble:
      item.real = value.ToDouble();
      item.length = sizeof(item.real);
      break;
    case ValueType::kDateTime:
      PutMoment(item, value.ToDateTime());
      break;
    case ValueType::kDecimal:
      PutDecimal(item, value);
      break;
    default:
      PutText(item, value.ToText());
  }
}

/// The size must be the whole text's: the driver cuts a longer text without an error.
void OdbcParameters::PutText(Item& item, const QString& text) {
  const qsizetype units = text.size();
  item.text = OdbcText(text);
  item.length = static_cast<SQLLEN>(units * static_cast<qsizetype>(sizeof(SQLWCHAR)));
  item.sqlType = units > kLongestShortText ? SQL_WLONGVARCHAR : SQL_WVARCHAR;
  item.size = static_cast<SQLULEN>(units > 0 ? units : 1);
}

void OdbcParameters::PutMoment(Item& item, const QDateTime& when) {
  item.moment = {.year = static_cast<SQLSMALLINT>(when.date().year()),
                 .month = static_cast<SQLUSMALLINT>(when.date().month()),
                 .day = static_cast<SQLUSMALLINT>(when.date().day()),
                 .hour = static_cast<SQLUSMALLINT>(when.time().hour()),
                 .minute = static_cast<SQLUSMALLINT>(when.time().minute()),
                 .second = static_cast<SQLUSMALLINT>(when.time().second()),
                 .fraction = static_cast<SQLUINTEGER>(when.time().msec()) * 1'000'000};
  item.length = sizeof(item.moment);
}

/// Sends the number as text, which keeps all its digits.
void OdbcParameters::PutDecimal(Item& item, const Value& value) {
  const auto scale = static_cast<qsizetype>(value.Scale());
  const bool negative = value.Unscaled() < 0;
  QString digits = QString::number(value.Unscaled()).mid(negative ? 1 : 0).rightJustified(scale + 1, u'0');
  if (scale > 0) digits.insert(digits.size() - scale, u'.');
  item.text = OdbcText(negative ? u'-' + digits : digits);
  item.length = SQL_NTS;
  item.scale = static_cast<SQLSMALLINT>(scale);
}

void OdbcParameters::BindTo(const OdbcHandle& statement) {
  SQLUSMALLINT number = 0;
  for (Item& item : items_) {
    const bool isText = item.cType == SQL_C_WCHAR;
    SQLPOINTER const place =
        isText ? static_cast<SQLPOINTER>(item.text.data()) : static_cast<SQLPOINTER>(&item.integer);
    const SQLRETURN bound = ::SQLBindParameter(statement.Get(), ++number, SQL_PARAM_INPUT, item.cType, item.sqlType,
                                               item.size, item.scale, place, 0, &item.length);
    if (!SQL_SUCCEEDED(bound)) throw OdbcFailure{statement.Records()};
  }
}

}  // namespace qbx
