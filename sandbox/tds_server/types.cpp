#include "tds_server/types.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "util/windows1252.h"

namespace qbx::tds {
namespace {

constexpr int kWithoutLimit = 0xFFFF;
constexpr qint64 kMillisecondsOfDay = 86'400'000;
constexpr qint64 kDaysTo1970 = 25567;      // from 1900-01-01
constexpr qint64 kDaysFromYear1 = 719162;  // to 1970-01-01

struct TypeWord {
  const char* word;
  WireType type;
};

const std::array kTypeWords = {
    TypeWord{"bit", {TypeId::kBitN, 1}},
    TypeWord{"tinyint", {TypeId::kIntN, 1}},
    TypeWord{"smallint", {TypeId::kIntN, 2}},
    TypeWord{"int", {TypeId::kIntN, 4}},
    TypeWord{"integer", {TypeId::kIntN, 4}},
    TypeWord{"bigint", {TypeId::kIntN, 8}},
    TypeWord{"real", {TypeId::kFloatN, 4}},
    TypeWord{"float", {TypeId::kFloatN, 8}},
    TypeWord{"money", {TypeId::kMoneyN, 8, 19, 4}},
    TypeWord{"decimal", {TypeId::kDecimalN, 17, 18, 0}},
    TypeWord{"numeric", {TypeId::kNumericN, 17, 18, 0}},
    TypeWord{"datetime", {TypeId::kDateTimeN, 8}},
    TypeWord{"smalldatetime", {TypeId::kDateTimeN, 4}},
    TypeWord{"date", {TypeId::kDate, 3}},
    TypeWord{"nvarchar", {TypeId::kNVarChar, 2}},
    TypeWord{"nchar", {TypeId::kNChar, 2}},
    TypeWord{"varchar", {TypeId::kVarChar, 1}},
    TypeWord{"char", {TypeId::kChar, 1}},
    TypeWord{"ntext", {TypeId::kNText, 0x7FFFFFFE}},
    TypeWord{"text", {TypeId::kText, 0x7FFFFFFF}},
};

bool IsNational(TypeId id) {
  return id == TypeId::kNVarChar || id == TypeId::kNChar || id == TypeId::kNText;
}

/// Latin, without regard to case, code page 1252.
void WriteCollation(ByteWriter& out) {
  out.U32(0x00D00409).U8(52);
}

double NumberOf(const Cell& cell) {
  switch (cell.type) {
    case ValueType::kBool:
    case ValueType::kInt:
      return static_cast<double>(cell.integer);
    case ValueType::kDouble:
      return cell.real;
    default:
      return cell.ToValue().ToDouble();
  }
}

qint64 IntegerOf(const Cell& cell) {
  const bool exact = cell.type == ValueType::kBool || cell.type == ValueType::kInt;
  return exact ? cell.integer : std::llround(NumberOf(cell));
}

/// The number times 10 to the power of `scale`; exact when the cell is.
qint64 ScaledOf(const Cell& cell, int scale) {
  if (cell.type == ValueType::kDecimal && cell.scale == scale) return cell.integer;
  return std::llround(NumberOf(cell) * PowerOfTen(scale));
}

void WriteFloat(ByteWriter& out, const WireType& type, double number) {
  quint64 bits = 0;
  if (type.size == 4) {
    const auto narrow = static_cast<float>(number);
    std::memcpy(&bits, &narrow, 4);
  } else {
    std::memcpy(&bits, &number, 8);
  }
  out.U8(static_cast<unsigned>(type.size)).Number(bits, type.size);
}

void WriteMoney(ByteWriter& out, const Cell& cell) {
  const auto scaled = static_cast<quint64>(ScaledOf(cell, 4));
  out.U8(8).U32(static_cast<quint32>(scaled >> 32)).U32(static_cast<quint32>(scaled));
}

void WriteDecimal(ByteWriter& out, const WireType& type, const Cell& cell) {
  const qint64 scaled = ScaledOf(cell, type.scale);
  const int bytes = type.precision <= 9 ? 4 : type.precision <= 19 ? 8 : type.precision <= 28 ? 12 : 16;
  const auto magnitude = static_cast<quint64>(scaled < 0 ? -scaled : scaled);
  out.U8(static_cast<unsigned>(bytes + 1)).U8(scaled < 0 ? 0 : 1).Number(magnitude, bytes > 8 ? 8 : bytes);
  if (bytes > 8) out.Number(0, bytes - 8);
}

qint64 FloorDivision(qint64 number, qint64 by) {
  return number / by - (number % by < 0 ? 1 : 0);
}

void WriteDate(ByteWriter& out, const WireType& type, const Cell& cell) {
  const QDateTime read = cell.type == ValueType::kDateTime ? QDateTime() : cell.ToValue().ToDateTime();
  if (cell.type != ValueType::kDateTime && !read.isValid()) {
    out.U8(0);
    return;
  }
  const qint64 milliseconds = read.isValid() ? read.toMSecsSinceEpoch() : cell.integer;
  const qint64 days = FloorDivision(milliseconds, kMillisecondsOfDay);
  const qint64 rest = milliseconds - days * kMillisecondsOfDay;
  out.U8(static_cast<unsigned>(type.size));
  if (type.id == TypeId::kDate) {
    out.Number(static_cast<quint64>(days + kDaysFromYear1), 3);
  } else if (type.size == 4) {
    out.U16(static_cast<unsigned>(days + kDaysTo1970)).U16(static_cast<unsigned>(rest / 60'000));
  } else {
    // In steps of 1/300 second, as the server stores it.
    const qint64 steps = std::min((rest * 3 + 5) / 10, kMillisecondsOfDay * 3 / 10 - 1);
    out.I32(static_cast<qint32>(days + kDaysTo1970)).U32(static_cast<quint32>(steps));
  }
}

void WriteText(ByteWriter& out, const WireType& type, const Cell& cell) {
  const QString text = cell.type == ValueType::kText
                           ? QString::fromUtf8(cell.utf8.data(), static_cast<qsizetype>(cell.utf8.size()))
                           : cell.ToValue().ToText();
  const QByteArray bytes = IsNational(type.id)
                               ? QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * 2)
                               : ToWindows1252(text);
  if (type.id == TypeId::kNText || type.id == TypeId::kText) {
    out.U8(16).Bytes(QByteArray(16, 'p')).Bytes(QByteArray(8, 't'));
    out.U32(static_cast<quint32>(bytes.size())).Bytes(bytes);
  } else if (type.size == kWithoutLimit) {
    out.U64(static_cast<quint64>(bytes.size()));
    if (!bytes.isEmpty()) out.U32(static_cast<quint32>(bytes.size())).Bytes(bytes);
    out.U32(0);
  } else {
    // SQLite stores text longer than its declaration, a server does not.
    const QByteArray kept = bytes.left(type.size);
    out.U16(static_cast<unsigned>(kept.size())).Bytes(kept);
  }
}

void WriteNull(ByteWriter& out, const WireType& type) {
  switch (type.id) {
    case TypeId::kNVarChar:
    case TypeId::kNChar:
    case TypeId::kVarChar:
    case TypeId::kChar:
      if (type.size == kWithoutLimit)
        out.U64(~quint64{0});
      else
        out.U16(0xFFFF);
      break;
    default:
      out.U8(0);
  }
}

}  // namespace

bool TypeFromWords(const QString& words, WireType& type) {
  const QString written = words.trimmed().toLower();
  const QString word = written.section(u'(', 0, 0).section(u' ', 0, 0).trimmed();
  const QString inBrackets = written.section(u'(', 1).section(u')', 0, 0);
  for (const TypeWord& known : kTypeWords) {
    if (word != QLatin1String(known.word)) continue;
    type = known.type;
    const int first = inBrackets.section(u',', 0, 0).trimmed().toInt();
    if (type.id == TypeId::kDecimalN || type.id == TypeId::kNumericN) {
      if (first > 0) type.precision = first;
      type.scale = inBrackets.section(u',', 1).trimmed().toInt();
    } else if (type.id == TypeId::kNVarChar || type.id == TypeId::kVarChar || type.id == TypeId::kNChar ||
               type.id == TypeId::kChar) {
      const int bytes = first * type.size;
      type.size = bytes > 0 && bytes <= 8000 ? bytes : kWithoutLimit;
    }
    return true;
  }
  return false;
}

WireType TypeOfValue(ValueType value) {
  switch (value) {
    case ValueType::kBool:
      return {TypeId::kBitN, 1};
    case ValueType::kInt:
      return {TypeId::kIntN, 8};
    case ValueType::kDouble:
      return {TypeId::kFloatN, 8};
    case ValueType::kDecimal:
      return {TypeId::kDecimalN, 17, 19, 4};
    case ValueType::kDateTime:
      return {TypeId::kDateTimeN, 8};
    default:
      return {TypeId::kNVarChar, kWithoutLimit};
  }
}

Cell CellOf(const Value& value, QByteArray& utf8) {
  Cell cell;
  cell.type = value.Type();
  cell.integer = value.Unscaled();
  cell.scale = static_cast<quint8>(value.Scale());
  utf8 = value.Type() == ValueType::kText ? value.ToText().toUtf8() : QByteArray();
  cell.utf8 = {utf8.constData(), static_cast<std::size_t>(utf8.size())};
  if (value.Type() == ValueType::kDouble) cell.real = value.ToDouble();
  if (value.Type() == ValueType::kDateTime) cell.integer = value.ToDateTime().toMSecsSinceEpoch();
  return cell;
}

void WriteType(ByteWriter& out, const WireType& type) {
  out.U8(static_cast<unsigned>(type.id));
  switch (type.id) {
    case TypeId::kDate:
      return;
    case TypeId::kNText:
    case TypeId::kText:
      out.U32(static_cast<quint32>(type.size));
      return WriteCollation(out);
    case TypeId::kNVarChar:
    case TypeId::kNChar:
    case TypeId::kVarChar:
    case TypeId::kChar:
      out.U16(static_cast<unsigned>(type.size));
      return WriteCollation(out);
    case TypeId::kDecimalN:
    case TypeId::kNumericN:
      out.U8(17).U8(static_cast<unsigned>(type.precision)).U8(static_cast<unsigned>(type.scale));
      return;
    default:
      out.U8(static_cast<unsigned>(type.size));
  }
}

void WriteValue(ByteWriter& out, const WireType& type, const Cell& cell) {
  if (cell.type == ValueType::kNull) return WriteNull(out, type);
  switch (type.id) {
    case TypeId::kBitN:
      out.U8(1).U8(IntegerOf(cell) != 0 ? 1 : 0);
      return;
    case TypeId::kIntN:
      out.U8(static_cast<unsigned>(type.size)).Number(static_cast<quint64>(IntegerOf(cell)), type.size);
      return;
    case TypeId::kFloatN:
      return WriteFloat(out, type, NumberOf(cell));
    case TypeId::kMoneyN:
      return WriteMoney(out, cell);
    case TypeId::kDecimalN:
    case TypeId::kNumericN:
      return WriteDecimal(out, type, cell);
    case TypeId::kDateTimeN:
    case TypeId::kDate:
      return WriteDate(out, type, cell);
    default:
      return WriteText(out, type, cell);
  }
}

}  // namespace qbx::tds
