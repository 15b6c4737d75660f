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

/// Called after each page that was written.
/// \return false to stop
using PageProgress = std::function<bool(const ReportPage& page)>;

struct PdfChoices {
  QString title = {};
  PageRange range = {};
  Paper paper = Paper::kBlank;
  std::function<bool()> goesOn = {};  ///< asked at each page that is laid out but not written; false stops
  /// Called when all pages are written, right before the file is renamed; an exception leaves the old file in place.
  std::function<void()> beforePlaced = {};
  bool wholeSheets = false;  ///< for printing on both sides: each document begins on a new sheet
};

/// Lays out the pager's remaining pages and writes them. A report that shows its number of pages is laid out completely
/// first; otherwise each page is written as soon as it is laid out.
/// \return false when it was stopped; the file is then unchanged
/// \throws PlainReportError when the range holds no page or the file cannot be written; the file is then unchanged
/// \throws ReportError, DatabaseError
bool ExportPdf(const Report& report, std::unique_ptr<Pager> pager, const QString& path, const PdfChoices& choices,
               const PageProgress& progress);

/// Writes pages that are kept for looking at. Pages that are needed but not laid out yet are laid out.
bool ExportPdf(const Report& report, ReportPages& pages, const QString& path, const PdfChoices& choices,
               const PageProgress& progress);

}  // namespace qbx
