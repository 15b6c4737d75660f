#include "exporting/compound_file.h"

#include <algorithm>

#include "exporting/export_parts.h"
#include "exporting/little_endian.h"

namespace qbx {

namespace {

constexpr quint32 kSector = 512;  // bytes; the header before the first sector has the same size
constexpr quint32 kNumbersASector = kSector / 4;
constexpr quint32 kTablesInHeader = 109;
constexpr qint64 kSmallestStream = 4096;  // a smaller stream would be stored in another way
constexpr qint64 kLargestStream = 0x7FFFFFFF;

// Special values of the sector table.
constexpr quint32 kFurtherTables = 0xFFFFFFFC;
constexpr quint32 kTable = 0xFFFFFFFD;
constexpr quint32 kEnd = 0xFFFFFFFE;
constexpr quint32 kNone = 0xFFFFFFFF;

constexpr char kRoot = 5;
constexpr char kStream = 2;

quint32 SectorsFor(qint64 count, qint64 perSector) {
  return static_cast<quint32>((count + perSector - 1) / perSector);
}

/// An entry of the directory. The root's child is the stream; no entry has siblings.
std::string DirectoryEntry(const QString& name, char kind, quint32 child, quint32 firstSector, qint64 size) {
  constexpr std::size_t kNameBytes = 64;
  std::string entry(reinterpret_cast<const char*>(name.utf16()), static_cast<std::size_t>(name.size()) * 2);
  const auto nameBytes = static_cast<quint16>(name.isEmpty() ? 0 : entry.size() + 2);
  entry.resize(kNameBytes);
  AppendNumber(entry, nameBytes);
  entry += kind;
  entry += '\1';  // black, as a node without siblings is
  AppendNumber(entry, kNone);
  AppendNumber(entry, kNone);
  AppendNumber(entry, child);
  entry.append(36, '\0');  // class, state and times
  AppendNumber(entry, firstSector);
  AppendNumber(entry, static_cast<quint64>(size));
  return entry;
}

}  // namespace

CompoundFile::CompoundFile(QIODevice& file, const QString& stream) : file_(file), stream_(stream) {
  Write(std::string(kSector, '\0'));
}

void CompoundFile::Append(std::string_view bytes) {
  size_ += static_cast<qint64>(bytes.size());
  if (size_ > kLargestStream)
    throw ExportError{QStringLiteral("The file would be larger than 2 GB, which is all that this format takes.")};
  Write(bytes);
}

void CompoundFile::Replace(qint64 position, std::string_view bytes) {
  Seek(kSector + position);
  Write(bytes);
  Seek(kSector + size_);
}

void CompoundFile::Finish() {
  const qint64 streamSize = std::max(size_, kSmallestStream);
  streamSectors_ = SectorsFor(streamSize, kSector);
  Write(std::string(static_cast<std::size_t>(streamSectors_ * qint64{kSector} - size_), '\0'));
  // The table also lists its own sectors, so it is enlarged until all fit.
  for (quint32 all = 0; all > tableSectors_ * kNumbersASector || all == 0;) {
    ++tableSectors_;
    furtherSectors_ = SectorsFor(std::max<qint64>(0, qint64{tableSectors_} - kTablesInHeader), kNumbersASector - 1);
    all = streamSectors_ + 1 + tableSectors_ + furtherSectors_;
  }
  AddDirectory(streamSize);
  AddSectorTable();
  Seek(0);
  AddHeader();
}

void CompoundFile::Seek(qint64 position) {
  if (!file_.seek(position)) throw ExportError{file_.errorString()};
}

void CompoundFile::Write(std::string_view bytes) {
  WriteAll(file_, bytes.data(), static_cast<qint64>(bytes.size()));
}

/// Writes the sector after the stream.
void CompoundFile::AddDirectory(qint64 streamSize) {
  const std::string unused = DirectoryEntry({}, '\0', kNone, 0, 0);
  Write(DirectoryEntry(QStringLiteral("Root Entry"), kRoot, 1, kEnd, 0) +
        DirectoryEntry(stream_, kStream, kNone, 0, streamSize) + unused + unused);
}

/// Stream, directory, this table and the sectors that list its places follow each other.
void CompoundFile::AddSectorTable() {
  const quint32 firstTable = streamSectors_ + 1;
  const quint32 firstFurther = firstTable + tableSectors_;
  const auto next = [&](quint32 sector) {
    if (sector < firstTable) return sector + 2 >= firstTable ? kEnd : sector + 1;
    if (sector < firstFurther) return kTable;
    return sector < firstFurther + furtherSectors_ ? kFurtherTables : kNone;
  };
  std::string bytes;
  for (quint32 sector = 0; sector < tableSectors_ * kNumbersASector; ++sector) {
    AppendNumber(bytes, next(sector));
    if (bytes.size() < kSector) continue;
    Write(bytes);
    bytes.clear();
  }
  quint32 told = kTablesInHeader;
  for (quint32 further = 1; further <= furtherSectors_; ++further) {
    for (quint32 i = 0; i + 1 < kNumbersASector; ++i, ++told)
      AppendNumber(bytes, told < tableSectors_ ? firstTable + told : kNone);
    AppendNumber(bytes, further < furtherSectors_ ? firstFurther + further : kEnd);
    Write(bytes);
    bytes.clear();
  }
}

void CompoundFile::AddHeader() {
  const quint32 firstTable = streamSectors_ + 1;
  std::string bytes("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8);
  bytes.append(16, '\0');
  for (const quint16 number :
       std::initializer_list<quint16>{0x3E, 3, 0xFFFE, 9, 6})  // version, byte order, sizes of sectors as powers of two
    AppendNumber(bytes, number);
  bytes.append(10, '\0');
  AppendNumber(bytes, tableSectors_);
  AppendNumber(bytes, streamSectors_);  // the place of the directory
  AppendNumber(bytes, quint32{0});
  AppendNumber(bytes, static_cast<quint32>(kSmallestStream));
  AppendNumber(bytes, kEnd);  // no small streams
  AppendNumber(bytes, quint32{0});
  AppendNumber(bytes, furtherSectors_ > 0 ? firstTable + tableSectors_ : kEnd);
  AppendNumber(bytes, furtherSectors_);
  for (quint32 table = 0; table < kTablesInHeader; ++table)
    AppendNumber(bytes, table < tableSectors_ ? firstTable + table : kNone);
  Write(bytes);
}

}  // namespace qbx
