// What the writers of the formats share.

#pragma once

#include <QIODevice>
#include <QString>

#include "exporting/export_file.h"

namespace qbx {

/// Why a file could not be written, for the user.
struct ExportError {
  QString text;
};

/// Thrown when the user gives the file up.
struct ExportCancelled {};

/// Asks at intervals whether to go on. A writer that reads the rows several times counts them each time.
class ProgressSteps {
 public:
  explicit ProgressSteps(const ExportProgress& progress, int passes = 1) : progress_(progress), passes_(passes) {}

  /// \throws ExportCancelled
  void Done(qint64 rows) const {
    constexpr qint64 kRowsAStep = 256;
    if (rows % kRowsAStep == 0) Tell(rows);
  }
  void Tell(qint64 rows) const {
    if (progress_ && !progress_(rows / passes_)) throw ExportCancelled{};
  }

 private:
  const ExportProgress& progress_;
  int passes_;
};

inline constexpr std::size_t kFlushedBytes = std::size_t{1} << 20;  ///< writers collect this much before they write

/// Writes all bytes. A full disk first accepts a part of them and reports the reason only at the next write.
/// \throws ExportError
inline void WriteAll(QIODevice& file, const char* bytes, qint64 size) {
  while (size > 0) {
    const qint64 written = file.write(bytes, size);
    if (written <= 0) throw ExportError{file.errorString()};
    bytes += written;
    size -= written;
  }
}

// The writers throw ExportError and ExportCancelled.

void WriteCsv(const ExportSheet& sheet, QIODevice& file, const ExportOptions& options, const ExportProgress& progress);

/// \param path  a file that is overwritten
/// \return how many texts were cut
qint64 WriteXlsx(const ExportSheet& sheet, const QString& path, const ExportOptions& options,
                 const ExportProgress& progress);

/// \param file  empty and seekable
/// \return how many texts were cut
qint64 WriteXls(const ExportSheet& sheet, QIODevice& file, const ExportOptions& options,
                const ExportProgress& progress);

}  // namespace qbx
