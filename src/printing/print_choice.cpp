#include "printing/print_choice.h"

#include <QTemporaryDir>
#include <algorithm>

#include "reports/report_error.h"

namespace qbx {

namespace {

/// Records which documents were written.
PageProgress RecordingDocuments(TakenOut& taken, const std::function<bool()>& goesOn) {
  return [&taken, &goesOn](const ReportPage& page) {
    taken.Add(page);
    return goesOn();
  };
}

/// Removes the documents of which a page was left out.
void KeepWhole(TakenOut& taken, ReportPages& pages, const PageRange& range) {
  for (int number = 1; number <= pages.Count(); ++number)
    if (const ReportPage page = pages.At(number); !range.Holds(page)) taken.Remove(page);
}

}  // namespace

TakenOut PrintPages(const ReportRun& run, ReportPages& pages, PrintService& service, const PrintChoice& choice,
                    const std::function<bool()>& goesOn,
                    const std::function<void(const TakenOut& printed)>& beforePrinted) {
  const QTemporaryDir folder;
  const QString file = folder.filePath(QStringLiteral("report.pdf"));
  TakenOut taken;
  if (!ExportPdf(run.report, pages, file,
                 {.title = run.caption,
                  .range = choice.range,
                  .paper = choice.paper,
                  .goesOn = goesOn,
                  .wholeSheets = choice.bothSides},
                 RecordingDocuments(taken, goesOn)))
    return {};
  taken.all = choice.range.HoldsAll();
  if (!taken.all) KeepWhole(taken, pages, choice.range);
  if (beforePrinted) beforePrinted(taken);
  service.Print(choice.printer, {.file = file,
                                 .title = run.caption,
                                 .copies = std::max(1, choice.copies),
                                 .bothSides = choice.bothSides,
                                 .tray = choice.tray,
                                 .paper = run.report.Paper().size / kUnitsPerMillimetre});
  return taken;
}

TakenOut SavePages(const ReportRun& run, ReportPages& pages, const QString& path, const std::function<bool()>& goesOn,
                   const std::function<void(const TakenOut& all)>& beforePlaced) {
  TakenOut taken;
  const auto whole = [&] {
    taken.all = true;
    if (beforePlaced) beforePlaced(taken);
  };
  if (!ExportPdf(run.report, pages, path, {.title = run.caption, .goesOn = goesOn, .beforePlaced = whole},
                 RecordingDocuments(taken, goesOn)))
    return {};
  return taken;
}

std::optional<Printer> DefaultPrinter(PrintService& service, const QString& ofUser) {
  const std::optional<std::vector<Printer>> printers = service.List();
  if (!printers) return std::nullopt;
  const int first = FirstChoice(*printers, ofUser);
  if (first < 0) throw PlainReportError{{QStringLiteral("No printer is set up on this computer.")}};
  return (*printers)[static_cast<size_t>(first)];
}

int FirstChoice(const std::vector<Printer>& printers, const QString& ofUser) {
  const auto isOfUser = [&ofUser](const Printer& printer) {
    return printer.deviceId.compare(ofUser, Qt::CaseInsensitive) == 0;
  };
  auto chosen = ofUser.isEmpty() ? printers.end() : std::ranges::find_if(printers, isOfUser);
  if (chosen == printers.end()) chosen = std::ranges::find_if(printers, &Printer::isDefault);
  if (chosen == printers.end()) chosen = printers.begin();
  return printers.empty() ? -1 : static_cast<int>(chosen - printers.begin());
}

}  // namespace qbx
