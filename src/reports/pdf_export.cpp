#include "reports/pdf_export.h"

#include "reports/pdf_file.h"
#include "reports/report_pages.h"

namespace qbx {

namespace {

bool WriteAsLaidOut(Pager& pager, PdfFile& file, const PageProgress& progress) {
  while (const std::optional<ReportPage> page = pager.Next()) {
    file.Add(*page, 0);
    if (!progress(*page)) return false;
  }
  return true;
}

bool WriteWithTotal(ReportPages pages, PdfFile& file, const PageProgress& progress) {
  while (pages.LayOutNext())
    if (!progress(pages.At(pages.Count()))) return false;
  for (int number = 1; number <= pages.Count(); ++number)
    file.Add(pages.At(number), pages.Total());
  return true;
}

}  // namespace

bool ExportPdf(const Report& report, std::unique_ptr<Pager> pager, const QString& path, const QString& title,
               const PageProgress& progress) {
  PdfFile file(path, report.Paper(), title);
  const bool whole = report.ShowsTotal() ? WriteWithTotal(ReportPages(report, std::move(pager)), file, progress)
                                         : WriteAsLaidOut(*pager, file, progress);
  if (whole) file.Finish();
  return whole;
}

}  // namespace qbx
