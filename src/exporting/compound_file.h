// A compound file: the container of .xls files, in which streams lie as files do on a disk.

#pragma once

#include <QIODevice>
#include <string_view>

namespace qbx {

/// Writes a compound file that holds one stream. The stream goes to the file as it comes, and nothing of it is kept.
///
/// Made by hand: one stream needs little, and libgsf, which would do it, neither says that the disk is full nor stops at 2 GB.
/// The calls throw ExportError.
class CompoundFile {
 public:
  /// \param file  empty and open; it can be sought in, and outlives this
  CompoundFile(QIODevice& file, const QString& stream);

  void Append(std::string_view bytes);
  /// Writes over what was appended before.
  void Replace(qint64 position, std::string_view bytes);
  /// Writes what makes a file of it. Nothing is appended afterwards.
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
  quint32 tableSectors_ = 0;    // that say which sector follows which
  quint32 furtherSectors_ = 0;  // that say where those are, beyond the ones that the header names
};

}  // namespace qbx
