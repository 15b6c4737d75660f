// One value of a database: what a cell of a recordset holds and what a parameter is given.

#pragma once

#include <QDateTime>
#include <QString>

namespace qbx {

enum class ValueType : quint8 { kNull, kBool, kInt, kDouble, kDecimal, kText, kDateTime };

/// A value with its type; cheap to copy. A date and time is the wall clock's, without a time zone. It is kept as UTC,
/// because UTC has every hour, also the one that the summer time skips. The `To...` conversions are null-safe: NULL
/// reads as false, 0, 0.0, empty text or an invalid date. Text read as a number gives its leading number, or 0.
class Value {
 public:
  Value() = default;
  Value(bool value) : type_(ValueType::kBool), int_(value ? 1 : 0) {}
  Value(int value) : type_(ValueType::kInt), int_(value) {}
  Value(qint64 value) : type_(ValueType::kInt), int_(value) {}
  Value(double value) : type_(ValueType::kDouble), double_(value) {}
  Value(const QString& value) : type_(ValueType::kText), text_(value) {}
  Value(const QDateTime& value) : type_(ValueType::kDateTime), dateTime_(WallClock(value)) {}
  Value(const char*) = delete;

  /// A fixed-point number, `unscaled` / 10^`scale`.
  [[nodiscard]] static Value Decimal(qint64 unscaled, int scale);
  /// NULL of no particular type.
  [[nodiscard]] static Value Null() { return {}; }

  [[nodiscard]] ValueType Type() const { return type_; }
  [[nodiscard]] bool IsNull() const { return type_ == ValueType::kNull; }
  [[nodiscard]] int Scale() const { return scale_; }
  [[nodiscard]] qint64 Unscaled() const { return int_; }

  [[nodiscard]] bool ToBool() const;
  [[nodiscard]] qint64 ToInt() const;  ///< a fraction rounds half to even
  [[nodiscard]] double ToDouble() const;
  /// Numbers in their shortest decimal form, a boolean as "True" or "False", dates as "dd/mm/yyyy", followed by "
  /// HH:mm:ss" unless the time is midnight.
  [[nodiscard]] QString ToText() const;
  [[nodiscard]] QDateTime ToDateTime() const;  ///< the wall clock, as UTC

  /// The date and time that a clock in that time zone shows, in the form of `ToDateTime`. To compare the current time
  /// with a stored one.
  [[nodiscard]] static QDateTime WallClock(const QDateTime& when);

  /// Same type and same value; text by code unit.
  friend bool operator==(const Value& left, const Value& right);

 private:
  ValueType type_ = ValueType::kNull;
  quint8 scale_ = 0;
  union {
    qint64 int_ = 0;
    double double_;
  };
  QString text_;
  QDateTime dateTime_;
};

/// 10 to the power of a scale, which is 0 or more.
[[nodiscard]] double PowerOfTen(int exponent);

}  // namespace qbx
