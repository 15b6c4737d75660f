#include "reports/pdf_export.h"

#include "reports/pdf_file.h"
#include "reports/report_error.h"

namespace qbx {

namespace {

/// Writes pages to the file.
class Writer {
 public:
  Writer(const Report& report, const QString& path, const PdfChoices& choices, const PageProgress& progress)
      : choices_(choices), progress_(progress), file_(path, report.Paper(), choices.title) {}

  /// \return false when writing is to stop
  bool Write(const ReportPage& page, int pages) {
    if (choices_.range.EndsBefore(page)) return false;
    if (!choices_.range.Holds(page)) {
      stopped_ = choices_.goesOn && !choices_.goesOn();
      return !stopped_;
    }
    if (choices_.wholeSheets && written_ % 2 != 0 && page.document != document_) AddBlankPage();
    document_ = page.document;
    file_.Add(page, pages, choices_.paper);
    ++written_;
    stopped_ = !progress_(page);
    return !stopped_;
  }

  bool Finish() {
    if (stopped_) return false;
    if (written_ == 0)
      throw PlainReportError{{choices_.range.firstDocument > 1
                                  ? QStringLiteral("There are fewer letters than that: none has such a number.")
                                  : QStringLiteral("There is no such page in the report.")}};
    if (choices_.beforePlaced) choices_.beforePlaced();
    file_.Finish();
    return true;
  }

 private:
  void AddBlankPage() {
    file_.AddBlankPage();
    ++written_;
  }

  const PdfChoices& choices_;
  const PageProgress& progress_;
  PdfFile file_;
  int written_ = 0;
  int document_ = 0;
  bool stopped_ = false;
};

}  // namespace

bool ExportPdf(const Report& report, std::unique_ptr<Pager> pager, const QString& path, const PdfChoices& choices,
               const PageProgress& progress) {
  if (report.ShowsTotal()) {
    ReportPages pages(report, std::move(pager));
    return ExportPdf(report, pages, path, choices, progress);
  }
  Writer writer(report, path, choices, progress);
  for (auto page = pager->Next(); page && writer.Write(*page, 0); page = pager->Next()) {
  }
  return writer.Finish();
}

bool ExportPdf(const Report& report, ReportPages& pages, const QString& path, const PdfChoices& choices,
               const PageProgress& progress) {
  while (report.ShowsTotal() && pages.LayOutNext())
    if (choices.goesOn && !choices.goesOn()) return false;
  Writer writer(report, path, choices, progress);
  const auto isThere = [&pages](int number) { return number <= pages.Count() || pages.LayOutNext(); };
  for (int number = 1; isThere(number) && writer.Write(pages.At(number), pages.Total()); ++number) {
  }
  return writer.Finish();
}

}  // namespace qbx
