#include "reports/spool.h"

#include "reports/report_error.h"

namespace qbx {

namespace {

[[noreturn]] void Fail(const QTemporaryFile& file) {
  throw ReportError{QStringLiteral("The report needs a temporary file: %1").arg(file.errorString())};
}

}  // namespace

Spool::Spool() {
  if (!file_.open()) Fail(file_);
}

void Spool::Append(const QByteArray& piece) {
  const qint64 start = ends_.empty() ? 0 : ends_.back();
  if (!file_.seek(start) || file_.write(piece) != piece.size()) Fail(file_);
  ends_.push_back(start + piece.size());
}

QByteArray Spool::At(qint64 index) {
  const auto i = static_cast<size_t>(index);
  const qint64 start = i == 0 ? 0 : ends_[i - 1];
  if (!file_.seek(start)) Fail(file_);
  QByteArray piece = file_.read(ends_[i] - start);
  if (piece.size() != ends_[i] - start) Fail(file_);
  return piece;
}

}  // namespace qbx
