// Records of the BIFF8 format, which .xls files consist of.

#pragma once

#include <string>

#include "exporting/compound_file.h"
#include "exporting/little_endian.h"

namespace qbx {

/// Without the header of the record; a CONTINUE record takes the rest.
inline constexpr std::size_t kMostRecordBytes = 8224;

/// Types of records, with the format's own names.
enum class Biff : quint16 {
  kEof = 0x0A,
  kCalcCount = 0x0C,
  kCalcMode = 0x0D,
  kPrecision = 0x0E,
  kHeader = 0x14,
  kFooter = 0x15,
  kExternSheet = 0x17,
  kName = 0x18,
  kSelection = 0x1D,
  kDateMode = 0x22,
  kLeftMargin = 0x26,
  kRightMargin = 0x27,
  kTopMargin = 0x28,
  kBottomMargin = 0x29,
  kFont = 0x31,
  kContinue = 0x3C,
  kWindow1 = 0x3D,
  kPane = 0x41,
  kCodePage = 0x42,
  kDefColWidth = 0x55,
  kObj = 0x5D,
  kColInfo = 0x7D,
  kWsBool = 0x81,
  kBoundSheet = 0x85,
  kCountry = 0x8C,
  kAutoFilterInfo = 0x9D,
  kSetup = 0xA1,
  kXf = 0xE0,
  kMsoDrawingGroup = 0xEB,
  kMsoDrawing = 0xEC,
  kSst = 0xFC,
  kLabelSst = 0xFD,
  kSupBook = 0x1AE,
  kDimensions = 0x200,
  kNumber = 0x203,
  kBoolErr = 0x205,
  kDefaultRowHeight = 0x225,
  kWindow2 = 0x23E,
  kRk = 0x27E,
  kStyle = 0x293,
  kFormat = 0x41E,
  kBof = 0x809,
};

/// How the header of a text describes its characters.
enum class BiffCharacters : quint8 { kLatin1 = 0, kUtf16 = 1 };

/// The bytes of a text and their encoding.
struct BiffText {
  std::string bytes;
  BiffCharacters characters = BiffCharacters::kLatin1;

  [[nodiscard]] std::size_t CharacterBytes() const { return characters == BiffCharacters::kLatin1 ? 1 : 2; }
  [[nodiscard]] std::size_t Length() const { return bytes.size() / CharacterBytes(); }
};
/// Uses one byte a character when all characters allow it.
[[nodiscard]] BiffText ToBiffText(std::string_view utf8);

/// Writes records one after the other:
///
///   out.Begin(Biff::kFont).U16(200).U16(0).Short("Arial").End();
///
/// The calls throw ExportError.
class BiffStream {
 public:
  explicit BiffStream(CompoundFile& file);

  BiffStream& Begin(Biff record);
  BiffStream& U8(quint32 number) { return Add(static_cast<quint8>(number)); }
  BiffStream& U16(quint32 number) { return Add(static_cast<quint16>(number)); }
  BiffStream& U32(quint32 number) { return Add(number); }
  BiffStream& Double(double number) { return Add(number); }
  BiffStream& Bytes(std::string_view bytes);
  BiffStream& Zeros(std::size_t count);
  BiffStream& Short(std::string_view utf8);  ///< a text of up to 255 characters, with its length in one byte
  BiffStream& Long(std::string_view utf8);   ///< a text with its length in two bytes
  void End();

  /// Position of the next byte.
  [[nodiscard]] qint64 Position() const { return flushed_ + static_cast<qint64>(buffer_.size()); }
  /// Overwrites a number that was written before.
  void Replace(qint64 position, quint32 number);
  void Flush();

 private:
  template <typename Number>
  BiffStream& Add(Number number) {
    AppendNumber(buffer_, number);
    return *this;
  }

  CompoundFile& file_;
  std::string buffer_;
  std::size_t begun_ = 0;  // start of the current record in the buffer
  qint64 flushed_ = 0;
};

}  // namespace qbx
