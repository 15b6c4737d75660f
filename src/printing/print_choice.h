// What the user chose to print, and printing it.

#pragma once

#include <QString>

#include "printing/print_report.h"
#include "printing/print_service.h"
#include "reports/report_pages.h"

namespace qbx {

/// A printer, and which part of a report it prints.
struct PrintChoice {
  Printer printer;
  int copies = 1;
  PageRange range = {};
  Paper paper = Paper::kBlank;
  bool bothSides = false;
  QString tray = {};
};

/// Writes the chosen pages to a file and puts it into the printer's queue.
/// \param goesOn         asked between pages; false stops
/// \param beforePrinted  called when the pages are written, right before the printer gets them; after an exception it
///                       does not get them
/// \return what was put into the queue; nothing when it was stopped. A document counts when all its pages were.
/// \throws ReportError      when a page cannot be made or the printer does not accept the file
/// \throws PrintingUnknown  when the printer may have the file
[[nodiscard]] TakenOut PrintPages(const ReportRun& run, ReportPages& pages, PrintService& service,
                                  const PrintChoice& choice, const std::function<bool()>& goesOn,
                                  const std::function<void(const TakenOut& printed)>& beforePrinted = {});

/// Writes all pages to a PDF file.
/// \param beforePlaced  called when the pages are written, right before the file is renamed; an exception leaves the
///                      old file in place
/// \return what was written
/// \throws ReportError
[[nodiscard]] TakenOut SavePages(const ReportRun& run, ReportPages& pages, const QString& path,
                                 const std::function<bool()>& goesOn,
                                 const std::function<void(const TakenOut& all)>& beforePlaced = {});

/// The printer that is used without asking.
/// \return nothing when the user pressed Cancel
/// \throws PlainReportError when there is none
[[nodiscard]] std::optional<Printer> DefaultPrinter(PrintService& service, const QString& ofUser);

/// The printer that is selected at first: that of the user's option if it exists, else the system's default, else the
/// first.
/// \return its index in the list, -1 when the list is empty
[[nodiscard]] int FirstChoice(const std::vector<Printer>& printers, const QString& ofUser);

}  // namespace qbx
