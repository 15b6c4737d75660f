// Pages written to a PDF file.

#pragma once

#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QString>

#include "reports/page_painter.h"
#include "reports/report_definition.h"
#include "reports/report_page.h"

namespace qbx {

/// A PDF file that comes into being page by page, with subsets of its fonts in it. It replaces the file of its name only when it was finished: one that is
/// given up leaves nothing behind.
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
