// A whole report as a PDF file.

#pragma once

#include <QString>
#include <functional>
#include <memory>

#include "reports/report.h"

namespace qbx {

/// Told after each page.
/// \return false to stop
using PageProgress = std::function<bool(const ReportPage& page)>;

/// Lays out what the pager has left and writes it. A report that shows of how many pages it is is laid out whole first; of any other a page is written as
/// soon as it is laid out.
/// \return false when `progress` stopped it; the file is then what it was
/// \throws ReportError, DatabaseError
bool ExportPdf(const Report& report, std::unique_ptr<Pager> pager, const QString& path, const QString& title,
               const PageProgress& progress);

}  // namespace qbx
