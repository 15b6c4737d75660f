#include "tds_server/parameters.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "util/windows1252.h"

namespace qbx::tds {
namespace {

constexpr quint8 kOutputFlag = 0x01;
constexpr quint8 kDefaultFlag = 0x02;
constexpr int kNoLimit = 0xFFFF;
constexpr quint16 kNullLength = 0xFFFF;
constexpr quint64 kNullTotal = ~quint64{0};
constexpr qint64 kNanosecondsOfDay = 86'400'000'000'000;

QDateTime WallTime(QDate day, qint64 milliseconds) {
  return QDateTime(day, QTime(0, 0), Qt::UTC).addMSecs(milliseconds);
}

/// Reads a value by its type.
class ValueReader {
 public:
  ValueReader(ByteReader& in, WireType& type) : in_(in), type_(type) {}

  Value Read() {
    type_.id = static_cast<TypeId>(in_.U8());
    switch (type_.id) {
      case TypeId::kNull:
        return {};
      case TypeId::kNVarChar:
      case TypeId::kNChar:
      case TypeId::kVarChar:
      case TypeId::kChar:
        return ReadText();
      case TypeId::kNText:
      case TypeId::kText:
        return ReadLongText();
      case TypeId::kDecimalN:
      case TypeId::kNumericN:
        return ReadDecimal();
      case TypeId::kDate:
        return ReadModernDate(false);
      case TypeId::kDateTime2:
      case TypeId::kTime:
        return ReadModernDate(true);
      default:
        return ReadNumber();
    }
  }

 private:
  [[nodiscard]] Value TextOf(QByteArrayView bytes) const {
    const bool national = type_.id == TypeId::kNVarChar || type_.id == TypeId::kNChar || type_.id == TypeId::kNText;
    return Value(national ? ByteReader(bytes).Text(bytes.size() / 2) : FromWindows1252(bytes.toByteArray()));
  }

  Value ReadText() {
    type_.size = in_.U16();
    in_.Skip(5);
    if (type_.size == kNoLimit) return ReadParts();
    const quint16 length = in_.U16();
    return length == kNullLength ? Value() : TextOf(in_.Bytes(length));
  }

  Value ReadParts() {
    if (in_.U64() == kNullTotal) return {};
    QByteArray whole;
    for (quint32 part = in_.U32(); part != 0; part = in_.U32())
      whole.append(in_.Bytes(part));
    return TextOf(whole);
  }

  Value ReadLongText() {
    type_.size = in_.I32();
    in_.Skip(5);
    const qint32 length = in_.I32();
    return length < 0 ? Value() : TextOf(in_.Bytes(length));
  }

  Value ReadDecimal() {
    type_.size = in_.U8();
    type_.precision = in_.U8();
    type_.scale = in_.U8();
    const int length = in_.U8();
    if (length == 0) return {};
    const bool positive = in_.U8() != 0;
    const quint64 low = in_.Number(std::min(length - 1, 8));
    for (int i = 9; i < length; ++i) {
      if (in_.U8() != 0) throw ProtocolError("a decimal of more than 18 digits");
    }
    const auto unscaled = static_cast<qint64>(low);
    return Value::Decimal(positive ? unscaled : -unscaled, type_.scale);
  }

  Value ReadModernDate(bool hasTime) {
    if (hasTime) type_.scale = in_.U8();
    const int length = in_.U8();
    if (length == 0) return {};
    qint64 nanoseconds = 0;
    const int dateBytes = type_.id == TypeId::kTime ? 0 : 3;
    if (hasTime) {
      nanoseconds = static_cast<qint64>(in_.Number(length - dateBytes));
      for (int scale = type_.scale; scale < 9; ++scale)
        nanoseconds *= 10;
    }
    const qint64 days = dateBytes > 0 ? static_cast<qint64>(in_.Number(3)) : 0;
    const QDate day = dateBytes > 0 ? QDate(1, 1, 1).addDays(days) : QDate(1900, 1, 1);
    return Value(WallTime(day, std::min(nanoseconds, kNanosecondsOfDay - 1) / 1'000'000));
  }

  Value ReadNumber() {
    const int fixed = FixedSize();
    if (fixed == 0) type_.size = in_.U8();
    const int length = fixed > 0 ? fixed : in_.U8();
    if (length == 0) return {};
    switch (type_.id) {
      case TypeId::kBitN:
      case TypeId::kBit:
        return Value(in_.Number(length) != 0);
      case TypeId::kFloatN:
      case TypeId::kFloat:
      case TypeId::kReal:
        return ReadFloat(length);
      case TypeId::kMoneyN:
      case TypeId::kMoney:
      case TypeId::kSmallMoney:
        return ReadMoney(length);
      case TypeId::kDateTimeN:
      case TypeId::kDateTime:
      case TypeId::kSmallDateTime:
        return ReadOldDate(length);
      default:
        return ReadInteger(length);
    }
  }

  [[nodiscard]] int FixedSize() const {
    switch (type_.id) {
      case TypeId::kTinyInt:
      case TypeId::kBit:
        return 1;
      case TypeId::kSmallInt:
        return 2;
      case TypeId::kInt:
      case TypeId::kReal:
      case TypeId::kSmallDateTime:
      case TypeId::kSmallMoney:
        return 4;
      case TypeId::kBigInt:
      case TypeId::kFloat:
      case TypeId::kMoney:
      case TypeId::kDateTime:
        return 8;
      case TypeId::kIntN:
      case TypeId::kBitN:
      case TypeId::kFloatN:
      case TypeId::kMoneyN:
      case TypeId::kDateTimeN:
        return 0;
      default:
        throw ProtocolError("a parameter of a type that is not known here");
    }
  }

  Value ReadInteger(int length) {
    const quint64 bits = in_.Number(length);
    switch (length) {
      case 1:
        return Value(static_cast<qint64>(bits));
      case 2:
        return Value(qint64{static_cast<qint16>(bits)});
      case 4:
        return Value(qint64{static_cast<qint32>(bits)});
      default:
        return Value(static_cast<qint64>(bits));
    }
  }

  Value ReadFloat(int length) {
    const quint64 bits = in_.Number(length);
    if (length == 4) {
      float narrow = 0;
      std::memcpy(&narrow, &bits, 4);
      return Value(static_cast<double>(narrow));
    }
    double number = 0;
    std::memcpy(&number, &bits, 8);
    return Value(number);
  }

  Value ReadMoney(int length) {
    if (length == 4) return Value::Decimal(in_.I32(), 4);
    const quint64 high = in_.U32();
    return Value::Decimal(static_cast<qint64>(high << 32 | in_.U32()), 4);
  }

  Value ReadOldDate(int length) {
    const QDate first(1900, 1, 1);
    if (length == 4) {
      const QDate day = first.addDays(in_.U16());
      return Value(WallTime(day, qint64{in_.U16()} * 60'000));
    }
    const QDate day = first.addDays(in_.I32());
    return Value(WallTime(day, (qint64{in_.U32()} * 10 + 1) / 3));
  }

  ByteReader& in_;
  WireType& type_;
};

}  // namespace

SentParameter ReadParameter(ByteReader& in) {
  SentParameter parameter;
  parameter.name = in.ShortText();
  const quint8 status = in.U8();
  parameter.isOutput = (status & kOutputFlag) != 0;
  parameter.isDefault = (status & kDefaultFlag) != 0;
  parameter.value = ValueReader(in, parameter.type).Read();
  return parameter;
}

QString Literal(const Value& value) {
  switch (value.Type()) {
    case ValueType::kNull:
      return QStringLiteral("NULL");
    case ValueType::kBool:
    case ValueType::kInt:
      return QString::number(value.ToInt());
    case ValueType::kDouble:
      return QString::number(value.ToDouble(), 'e', std::numeric_limits<double>::max_digits10 - 1);
    case ValueType::kDecimal:
      return value.ToText();
    case ValueType::kDateTime: {
      const QDateTime when = value.ToDateTime();
      const bool whole = when.time().msec() == 0;
      return u'\'' +
             when.toString(whole ? QStringLiteral("yyyy-MM-dd HH:mm:ss") : QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")) +
             u'\'';
    }
    case ValueType::kText:
      return QStringLiteral("N'") + value.ToText().replace(u'\'', QStringLiteral("''")) + u'\'';
  }
  return {};
}

}  // namespace qbx::tds
