// What the user chose to print, and the printing of it.

#pragma once

#include <QString>

#include "printing/print_report.h"
#include "printing/print_service.h"
#include "reports/report_pages.h"

namespace qbx {

/// A printer and what of a report it prints.
struct PrintChoice {
  Printer printer;
  int copies = 1;
  PageRange range = {};
  Paper paper = Paper::kBlank;
  bool bothSides = false;
  QString tray = {};
};

/// Puts the chosen pages into a file and that into the queue of the printer.
/// \param goesOn  asked between pages; false stops it
/// \return what was handed over; nothing when it was stopped. A document counts when all its pages were.
/// \throws ReportError when a page cannot be made or the printer does not take the file
[[nodiscard]] TakenOut PrintPages(const ReportRun& run, ReportPages& pages, PrintService& service,
                                  const PrintChoice& choice, const std::function<bool()>& goesOn);

/// Writes all pages to a PDF file.
/// \param beforePlaced  told when they are written, right before the file takes its place; what it throws leaves the file as it was
/// \return what was written
/// \throws ReportError
[[nodiscard]] TakenOut SavePages(const ReportRun& run, ReportPages& pages, const QString& path,
                                 const std::function<bool()>& goesOn,
                                 const std::function<void(const TakenOut& all)>& beforePlaced = {});

/// The printer that is taken without asking.
/// \return nothing when the user pressed Cancel
/// \throws PlainReportError when there is none
[[nodiscard]] std::optional<Printer> DefaultPrinter(PrintService& service, const QString& ofUser);

/// The printer that is chosen at first: that of the user's option when there is such a one, else the system's default, else the first.
/// \return its place in the list, -1 when the list is empty
[[nodiscard]] int FirstChoice(const std::vector<Printer>& printers, const QString& ofUser);

}  // namespace qbx
