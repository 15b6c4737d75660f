// Pieces of bytes kept on disk, so that memory does not grow with their number.

#pragma once

#include <QByteArray>
#include <QTemporaryFile>
#include <vector>

namespace qbx {

/// A list of byte arrays in a temporary file without a name.
class Spool {
 public:
  Spool();

  /// \throws ReportError when the disk is full
  void Append(const QByteArray& piece);
  [[nodiscard]] qint64 Count() const { return static_cast<qint64>(ends_.size()); }
  /// \throws ReportError
  [[nodiscard]] QByteArray At(qint64 index);

 private:
  QTemporaryFile file_;
  std::vector<qint64> ends_;  // the end of each piece
};

}  // namespace qbx
