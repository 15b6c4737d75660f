#include "reports/pdf_file.h"

#include <QDir>
#include <QPageLayout>

#include "platform/safe_file.h"
#include "reports/page_painter.h"
#include "reports/report_error.h"

namespace qbx {

namespace {

QPageLayout LayoutOf(const ReportPaper& paper) {
  const QPageSize size(paper.size / kUnitsPerMillimetre, QPageSize::Millimeter);
  QPageLayout layout(size, paper.landscape ? QPageLayout::Landscape : QPageLayout::Portrait, {});
  layout.setMode(QPageLayout::FullPageMode);
  return layout;
}

/// The system's error texts do not name the file.
PlainReportError FileError(const QString& path, const QString& reason) {
  return {{QStringLiteral("The file cannot be written: %1 (%2)").arg(QDir::toNativeSeparators(path), reason)}};
}

PlainReportError FileError(const QSaveFile& file) {
  return FileError(file.fileName(), file.errorString());
}

}  // namespace

PdfFile::PdfFile(const QString& path, const ReportPaper& paper, const QString& title) : file_(path), writer_(&file_) {
  if (const QString problem = NameProblem(path); !problem.isEmpty()) throw FileError(path, problem);
  if (!file_.open(QIODevice::WriteOnly)) throw FileError(file_);
  writer_.setTitle(title);
  writer_.setResolution(kUnitsPerInch);
  writer_.setPageLayout(LayoutOf(paper));
  if (!painter_.begin(&writer_)) throw FileError(file_);
}

void PdfFile::NextPage() {
  if (!empty_) writer_.newPage();
  empty_ = false;
}

void PdfFile::Add(const ReportPage& page, int pages, Paper paper) {
  NextPage();
  PaintPage(painter_, page, pages, paper);
}

void PdfFile::AddBlankPage() {
  NextPage();
}

void PdfFile::Finish() {
  painter_.end();
  if (file_.error() != QFileDevice::NoError || !file_.commit()) throw FileError(file_);
}

}  // namespace qbx
