// A report as a PDF file.

#pragma once

#include <QString>
#include <functional>
#include <memory>

#include "reports/page_painter.h"
#include "reports/page_range.h"
#include "reports/report.h"
#include "reports/report_pages.h"

namespace qbx {

/// Told after each page that is written.
/// \return false to stop
using PageProgress = std::function<bool(const ReportPage& page)>;

struct PdfChoices {
  QString title = {};
  PageRange range = {};
  Paper paper = Paper::kBlank;
  std::function<bool()> goesOn = {};  ///< asked at each page that is laid out and not written; false stops
  std::function<void()> beforePlaced =
      {};  ///< called when all pages are written, right before the file takes its place; what it throws leaves the file as it was
  bool wholeSheets = false;  ///< for both sides of the paper: what is printed as one begins on a sheet of its own
};

/// Lays out what the pager has left and writes it. A report that shows of how many pages it is is laid out whole first; of any other a page is written as
/// soon as it is laid out.
/// \return false when it was stopped; the file is then what it was
/// \throws PlainReportError when no page lies in the range, or the file cannot be written; the file is then what it was, too
/// \throws ReportError, DatabaseError
bool ExportPdf(const Report& report, std::unique_ptr<Pager> pager, const QString& path, const PdfChoices& choices,
               const PageProgress& progress);

/// The same of pages that were looked at; those that are not laid out yet are, as far as they are needed.
bool ExportPdf(const Report& report, ReportPages& pages, const QString& path, const PdfChoices& choices,
               const PageProgress& progress);

}  // namespace qbx
