// The types of the wire: how a column is declared to a client, and how its values are written.

#pragma once

#include <QString>

#include "database/session.h"
#include "tds_server/bytes.h"

namespace qbx::tds {

/// The number of a type on the wire. Types with an N may be NULL.
enum class TypeId : quint8 {
  kNull = 0x1F,
  kText = 0x23,
  kIntN = 0x26,
  kDate = 0x28,
  kTime = 0x29,
  kDateTime2 = 0x2A,
  kTinyInt = 0x30,
  kBit = 0x32,
  kSmallInt = 0x34,
  kInt = 0x38,
  kSmallDateTime = 0x3A,
  kReal = 0x3B,
  kMoney = 0x3C,
  kDateTime = 0x3D,
  kFloat = 0x3E,
  kNText = 0x63,
  kBitN = 0x68,
  kDecimalN = 0x6A,
  kNumericN = 0x6C,
  kFloatN = 0x6D,
  kMoneyN = 0x6E,
  kDateTimeN = 0x6F,
  kSmallMoney = 0x7A,
  kBigInt = 0x7F,
  kVarChar = 0xA7,
  kBinary = 0xAD,
  kChar = 0xAF,
  kNVarChar = 0xE7,
  kNChar = 0xEF,
};

struct WireType {
  TypeId id = TypeId::kNVarChar;
  int size = 0;  ///< bytes; 0xFFFF for nvarchar and varchar: without a limit
  int precision = 0;
  int scale = 0;
};

/// Reads a type as CREATE TABLE writes it: "nvarchar(50)", "decimal(10,2)", "ntext".
/// \return false when it is no type of the server
[[nodiscard]] bool TypeFromWords(const QString& words, WireType& type);

/// The type of an expression, by its value.
[[nodiscard]] WireType TypeOfValue(ValueType value);

/// A value as a cell.
/// \param utf8  keeps its text
[[nodiscard]] Cell CellOf(const Value& value, QByteArray& utf8);

void WriteType(ByteWriter& out, const WireType& type);
/// \param cell  is converted to the type
void WriteValue(ByteWriter& out, const WireType& type, const Cell& cell);

}  // namespace qbx::tds
