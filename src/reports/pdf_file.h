// Writing pages to a PDF file.

#pragma once

#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QString>

#include "reports/page_painter.h"
#include "reports/report_definition.h"
#include "reports/report_page.h"

namespace qbx {

/// A PDF file that is written page by page, with subsets of its fonts embedded. It replaces an older file of its name
/// when it is finished. When it is given up it leaves nothing behind.
class PdfFile {
 public:
  /// \throws ReportError
  PdfFile(const QString& path, const ReportPaper& paper, const QString& title);

  void Add(const ReportPage& page, int pages, Paper paper);
  void AddBlankPage();
  /// \throws ReportError when it could not be written
  void Finish();

 private:
  void NextPage();

  QSaveFile file_;
  QPdfWriter writer_;
  QPainter painter_;
  bool empty_ = true;
};

}  // namespace qbx
