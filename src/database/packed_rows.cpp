#include "database/packed_rows.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace qbx {
namespace {

// The first block and the first chunk are small, so that a result of one row takes little memory.
constexpr std::size_t kFirstRows = 16;
constexpr std::size_t kRowsPerBlock = 1024;
constexpr std::size_t kFirstTextChunk = std::size_t{2} << 10;
constexpr std::size_t kTextChunk = std::size_t{1} << 20;
constexpr std::size_t kLengthBytes = sizeof(quint32);

// The lower half of a type byte is the type, the upper half the scale of a decimal.
quint8 TypeByte(const Cell& cell) {
  return static_cast<quint8>(static_cast<unsigned>(cell.type) | (static_cast<unsigned>(cell.scale) << 4U));
}

std::size_t RowsOfBlock(std::size_t block) {
  return block == 0 ? kFirstRows : kRowsPerBlock;
}

/// A value as a cell; `utf8` keeps its text alive.
Cell CellOf(const Value& value, QByteArray& utf8) {
  Cell cell;
  cell.type = value.Type();
  switch (value.Type()) {
    case ValueType::kNull:
      break;
    case ValueType::kDouble:
      cell.real = value.ToDouble();
      break;
    case ValueType::kDecimal:
      cell.integer = value.Unscaled();
      cell.scale = static_cast<quint8>(value.Scale());
      break;
    case ValueType::kText:
      utf8 = value.ToText().toUtf8();
      cell.utf8 = {utf8.constData(), static_cast<std::size_t>(utf8.size())};
      break;
    case ValueType::kDateTime: {
      const QDateTime when = value.ToDateTime();
      cell.integer = QDate(1970, 1, 1).daysTo(when.date()) * 86'400'000 + when.time().msecsSinceStartOfDay();
      break;
    }
    default:
      cell.integer = value.ToInt();
  }
  return cell;
}

}  // namespace

PackedRows PackedRows::Copy() const {
  PackedRows copy = *this;
  copy.textNext_ = nullptr;
  copy.textLeft_ = 0;
  return copy;
}

/// Called before a cell changes: copies a block that is shared with another copy.
void PackedRows::Own(std::size_t block) {
  if (slots_[block].use_count() == 1) return;
  const std::size_t cells = RowsOfBlock(block) * columns_;
  auto slots = std::make_shared_for_overwrite<qint64[]>(cells);
  std::copy_n(slots_[block].get(), cells, slots.get());
  auto types = std::make_shared_for_overwrite<quint8[]>(cells);
  std::copy_n(types_[block].get(), cells, types.get());
  slots_[block] = std::move(slots);
  types_[block] = std::move(types);
}

char* PackedRows::Reserve(std::size_t bytes) {
  if (bytes > kTextChunk / 4) {  // a long text gets its own chunk, so that the current chunk is not left half empty
    texts_.push_back(std::make_shared_for_overwrite<char[]>(bytes));
    return texts_.back().get();
  }
  if (bytes > textLeft_) {
    const std::size_t chunk = texts_.empty() && bytes <= kFirstTextChunk ? kFirstTextChunk : kTextChunk;
    texts_.push_back(std::make_shared_for_overwrite<char[]>(chunk));
    textNext_ = texts_.back().get();
    textLeft_ = chunk;
  }
  char* place = textNext_;
  textNext_ += bytes;
  textLeft_ -= bytes;
  return place;
}

qint64 PackedRows::StoreText(std::string_view text) {
  char* place = Reserve(kLengthBytes + text.size());
  const auto length = static_cast<quint32>(text.size());
  std::memcpy(place, &length, kLengthBytes);
  if (!text.empty()) std::memcpy(place + kLengthBytes, text.data(), text.size());
  return std::bit_cast<qint64>(place);
}

void PackedRows::Store(Place place, const Cell& value) {
  types_[place.block].get()[place.cell] = TypeByte(value);
  qint64& slot = slots_[place.block].get()[place.cell];
  switch (value.type) {
    case ValueType::kNull:
      slot = 0;
      break;
    case ValueType::kDouble:
      slot = std::bit_cast<qint64>(value.real);
      break;
    case ValueType::kText:
      slot = StoreText(value.utf8);
      break;
    default:
      slot = value.integer;
  }
}

PackedRows::Place PackedRows::Locate(qint64 row, std::size_t column) const {
  const auto index = static_cast<std::size_t>(row);
  if (index < kFirstRows) return {0, index * columns_ + column};
  const std::size_t behind = index - kFirstRows;
  return {1 + behind / kRowsPerBlock, (behind % kRowsPerBlock) * columns_ + column};
}

void PackedRows::Append(const RowSource& source) {
  const Place first = Locate(count_, 0);
  if (first.block == slots_.size()) {
    const std::size_t cells = RowsOfBlock(first.block) * columns_;
    slots_.push_back(std::make_shared_for_overwrite<qint64[]>(cells));
    types_.push_back(std::make_shared_for_overwrite<quint8[]>(cells));
  }
  for (std::size_t column = 0; column < columns_; ++column) {
    Store({first.block, first.cell + column}, source.At(static_cast<int>(column)));
  }
  ++count_;
}

Cell PackedRows::At(qint64 row, int column) const {
  const Place place = Locate(row, static_cast<std::size_t>(column));
  const quint8 type = types_[place.block].get()[place.cell];
  const qint64 slot = slots_[place.block].get()[place.cell];
  Cell cell;
  cell.type = static_cast<ValueType>(type & 0x0FU);
  switch (cell.type) {
    case ValueType::kDouble:
      cell.real = std::bit_cast<double>(slot);
      break;
    case ValueType::kText: {
      const char* text = std::bit_cast<const char*>(slot);
      quint32 length = 0;
      std::memcpy(&length, text, kLengthBytes);
      cell.utf8 = {text + kLengthBytes, length};
      break;
    }
    default:
      cell.integer = slot;
      cell.scale = static_cast<quint8>(type >> 4U);
  }
  return cell;
}

void PackedRows::Set(qint64 row, int column, const Value& value) {
  QByteArray utf8;
  const Place place = Locate(row, static_cast<std::size_t>(column));
  Own(place.block);
  Store(place, CellOf(value, utf8));
}

}  // namespace qbx
