// A compound file: the container of .xls files. It holds streams as a disk holds files.

#pragma once

#include <QIODevice>
#include <QString>
#include <string_view>

namespace qbx {

/// Writes a compound file with one stream. The stream is written to the file as it comes and not kept.
///
/// Written by hand because one stream needs little code, and because libgsf neither reports a full disk nor refuses
/// files over 2 GB. The calls throw ExportError.
class CompoundFile {
 public:
  /// \param file  empty, open and seekable; outlives this object
  CompoundFile(QIODevice& file, const QString& stream);

  void Append(std::string_view bytes);
  /// Overwrites bytes that were appended before.
  void Replace(qint64 position, std::string_view bytes);
  /// Writes the tables that complete the file. Nothing may be appended afterwards.
  void Finish();

 private:
  void Seek(qint64 position);
  void Write(std::string_view bytes);
  void AddDirectory(qint64 streamSize);
  void AddSectorTable();
  void AddHeader();

  QIODevice& file_;
  QString stream_;
  qint64 size_ = 0;  // of the stream
  quint32 streamSectors_ = 0;
  quint32 tableSectors_ = 0;    // sectors of the table that gives each sector's successor
  quint32 furtherSectors_ = 0;  // sectors that list further sectors of that table, beyond those listed in the header
};

}  // namespace qbx
