// What the writers of the formats have in common.

#pragma once

#include <QIODevice>
#include <QString>

#include "exporting/export_file.h"

namespace qbx {

/// Why a file could not be written, for the user.
struct ExportError {
  QString text;
};

/// The user gave the file up.
struct ExportCancelled {};

/// Asks after every so many rows whether to go on. A writer that passes the rows more than once counts them in every pass.
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

inline constexpr std::size_t kFlushedBytes = std::size_t{1} << 20;  ///< that writers gather before they write

/// Writes all of it. A disk that is full takes a part first, and says why only when it is asked again.
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

/// \param file  empty, and one that can be sought in
/// \return how many texts were cut
qint64 WriteXls(const ExportSheet& sheet, QIODevice& file, const ExportOptions& options,
                const ExportProgress& progress);

}  // namespace qbx
