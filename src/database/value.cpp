// Conversions of one value.

#include "database/value.h"

#include <cmath>
#include <limits>

#include "database/session.h"
#include "util/date_text.h"
#include "util/text.h"

namespace qbx {

double PowerOfTen(int exponent) {
  double power = 1;
  for (int i = 0; i < exponent; ++i)
    power *= 10;
  return power;
}

namespace {

constexpr qint64 kMillisecondsPerDay = 86'400'000;

qint64 RoundToInt(double number) {
  if (std::isnan(number)) return 0;
  const double rounded = std::nearbyint(number);
  if (rounded >= 9223372036854775808.0) return std::numeric_limits<qint64>::max();
  if (rounded < -9223372036854775808.0) return std::numeric_limits<qint64>::min();
  return static_cast<qint64>(rounded);
}

QString DecimalText(qint64 unscaled, int scale) {
  QString digits = QString::number(unscaled);
  const bool negative = digits.startsWith(QLatin1Char('-'));
  if (negative) digits.remove(0, 1);
  if (scale > 0) {
    digits = digits.rightJustified(scale + 1, QLatin1Char('0'));
    digits.insert(digits.size() - scale, QLatin1Char('.'));
    while (digits.endsWith(QLatin1Char('0')))
      digits.chop(1);
    if (digits.endsWith(QLatin1Char('.'))) digits.chop(1);
  }
  return negative ? QLatin1Char('-') + digits : digits;
}

QString DateText(const QDateTime& when) {
  if (!when.isValid()) return {};
  const bool midnight = when.time().msecsSinceStartOfDay() == 0;
  return midnight ? DayText(when.date()) : SecondText(when);
}

/// Text as a date: "yyyy-mm-dd" or "dd/mm/yyyy", with or without a time.
QDateTime DateFromText(const QString& text) {
  const QString trimmed = text.trimmed();
  const QDate date = trimmed.mid(2, 1) == QLatin1String("/") ? ReadDayText(trimmed.left(10))
                                                             : QDate::fromString(trimmed.left(10), Qt::ISODate);
  if (!date.isValid()) return {};
  if (trimmed.size() <= 10) return QDateTime(date, QTime(0, 0), Qt::UTC);
  const QTime time = QTime::fromString(trimmed.mid(11), Qt::ISODateWithMs);
  return time.isValid() ? QDateTime(date, time, Qt::UTC) : QDateTime();
}

}  // namespace

Value Value::Decimal(qint64 unscaled, int scale) {
  Value value;
  value.type_ = ValueType::kDecimal;
  value.int_ = unscaled;
  value.scale_ = static_cast<quint8>(scale);
  return value;
}

QDateTime Value::WallClock(const QDateTime& when) {
  return when.isValid() ? QDateTime(when.date(), when.time(), Qt::UTC) : QDateTime();
}

bool Value::ToBool() const {
  switch (type_) {
    case ValueType::kText:
      return text_.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0 || LeadingNumber(text_) != 0;
    case ValueType::kDouble:
      return double_ != 0;
    case ValueType::kDateTime:
      return dateTime_.isValid();
    default:
      return int_ != 0;
  }
}

qint64 Value::ToInt() const {
  switch (type_) {
    case ValueType::kDouble:
    case ValueType::kDecimal:
    case ValueType::kText:
      return RoundToInt(ToDouble());
    case ValueType::kDateTime:
      return 0;
    default:
      return int_;
  }
}

double Value::ToDouble() const {
  switch (type_) {
    case ValueType::kDouble:
      return double_;
    case ValueType::kDecimal:
      return static_cast<double>(int_) / PowerOfTen(scale_);
    case ValueType::kText:
      return LeadingNumber(text_);
    case ValueType::kDateTime:
      return 0;
    default:
      return static_cast<double>(int_);
  }
}

QString Value::ToText() const {
  switch (type_) {
    case ValueType::kNull:
      return {};
    case ValueType::kBool:
      return int_ != 0 ? QStringLiteral("True") : QStringLiteral("False");
    case ValueType::kInt:
      return QString::number(int_);
    case ValueType::kDouble:
      return ShortestNumber(double_);
    case ValueType::kDecimal:
      return DecimalText(int_, scale_);
    case ValueType::kText:
      return text_;
    case ValueType::kDateTime:
      return DateText(dateTime_);
  }
  return {};
}

QDateTime Value::ToDateTime() const {
  if (type_ == ValueType::kDateTime) return dateTime_;
  return type_ == ValueType::kText ? DateFromText(text_) : QDateTime();
}

bool operator==(const Value& left, const Value& right) {
  if (left.type_ != right.type_) return false;
  switch (left.type_) {
    case ValueType::kNull:
      return true;
    case ValueType::kDouble:
      return left.double_ == right.double_;
    case ValueType::kDecimal:
      return left.int_ == right.int_ && left.scale_ == right.scale_;
    case ValueType::kText:
      return left.text_ == right.text_;
    case ValueType::kDateTime:
      return left.dateTime_ == right.dateTime_;
    default:
      return left.int_ == right.int_;
  }
}

Value Cell::ToValue() const {
  switch (type) {
    case ValueType::kNull:
      return {};
    case ValueType::kBool:
      return Value(integer != 0);
    case ValueType::kInt:
      return Value(integer);
    case ValueType::kDouble:
      return Value(real);
    case ValueType::kDecimal:
      return Value::Decimal(integer, scale);
    case ValueType::kText:
      return Value(QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())));
    case ValueType::kDateTime: {
      const qint64 day =
          integer >= 0 ? integer / kMillisecondsPerDay : -((-integer + kMillisecondsPerDay - 1) / kMillisecondsPerDay);
      const QDate date = QDate(1970, 1, 1).addDays(day);
      const QTime time = QTime::fromMSecsSinceStartOfDay(static_cast<int>(integer - day * kMillisecondsPerDay));
      return Value(QDateTime(date, time, Qt::UTC));
    }
  }
  return {};
}

}  // namespace qbx
