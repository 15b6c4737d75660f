// Running a report: it is opened, connected and filled, then shown, printed or written to a PDF file.

#pragma once

#include <QSet>
#include <QString>
#include <functional>
#include <optional>

#include "database/event_log.h"
#include "diagnostics/diagnostics.h"
#include "printing/connected_rows.h"
#include "printing/report_fields.h"
#include "printing/report_place.h"
#include "printing/report_state.h"
#include "printing/taken_out.h"
#include "reports/pdf_export.h"
#include "reports/report.h"
#include "settings/user_options.h"

namespace qbx {

enum class ReportMode { kPreview = 0, kPrint = 1, kPdf = 2 };

/// Follows a report while its window is open. The base class does nothing.
class ReportFollower {
 public:
  virtual ~ReportFollower() = default;
  /// Called when the pages are complete, right before their PDF file is renamed or handed to the printer. An exception
  /// leaves the old file in place, or the printer without the pages; `ReportCancelled` is not reported to the user.
  /// \param taken  everything in the pages
  virtual void AboutToGoOut(const TakenOut& taken, const ReportPlace& place) {
    static_cast<void>(taken);
    static_cast<void>(place);
  }
  /// Called when nobody knows whether the pages of the last `AboutToGoOut` went out.
  virtual void MayBeOut() {}
  /// Called when something was printed or saved.
  /// \param taken  everything that was printed or saved so far
  virtual void TookOut(const TakenOut& taken) { static_cast<void>(taken); }
  /// Asked before and, from time to time, while something is printed or saved.
  /// \return false to forbid it; the user was told why
  [[nodiscard]] virtual bool MayGoOn() { return true; }
};

/// A report that is ready to be shown or printed.
struct ReportRun {
  const Report& report;
  ReportDatabase& database;
  QString caption;  ///< the report's title, or its name
  QString reportName;
  int recordType = 0;
  bool landscape = false;
  QString printer;  ///< the user's printer for reports; empty for the system's default
  ReportFollower& follower;
};

/// The result of running a report.
enum class ReportOutcome {
  kFailed,    ///< nothing was printed or saved; the user was told why
  kLookedAt,  ///< its preview was closed without printing or saving
  kOut,       ///< it was printed or saved
};

/// Where reports go when not to a file: to windows and to the system's printers.
class ReportOutlet {
 public:
  virtual ~ReportOutlet() = default;
  /// Shows the report until the user closes it.
  /// \return what was printed or saved meanwhile
  virtual TakenOut Preview(const ReportRun& run) = 0;
  /// \param prompt  whether to ask for printer, copies and pages first
  /// \return what was printed
  /// \throws ReportError
  virtual TakenOut Print(const ReportRun& run, bool prompt) = 0;
};

/// For a program that has neither windows nor printers.
class NoOutlet final : public ReportOutlet {
 public:
  TakenOut Preview(const ReportRun&) override { return {}; }
  TakenOut Print(const ReportRun&, bool) override { return {}; }
};

/// What running a report works with, by reference.
struct ReportPrinterParts {
  const StartupValues& startup;
  const Options& options;
  const UserOptions& userOptions;
  const CurrentCampaign& campaign;
  Connection& connection;
  EventLog& events;
  Diagnostics diagnostics;
  ReportOutlet& outlet;
};

/// Runs one report at a time, from its definition to its output. Every outcome is shown to the user.
class ReportPrinter {
 public:
  explicit ReportPrinter(const ReportPrinterParts& parts) : parts_(parts) {}

  /// The state that is kept from run to run. A caller sets the PDF file name and the filter before a run.
  ReportState state;

  /// \param prompt  for kPrint: whether the print dialog is shown first
  ReportOutcome PrintReport(const QString& path, ReportMode mode, bool prompt, const ReportRunValues& values);

  /// What the last run printed or saved.
  [[nodiscard]] const TakenOut& Taken() const { return taken_; }

  // The following settings hold only for the next run.

  /// Sets a function that is called for each page written to a PDF; returning false stops.
  void OnPage(PageProgress told) { onPage_ = std::move(told); }
  /// Sets who follows the report.
  void Follow(ReportFollower& follower) { follower_ = &follower; }
  /// Writes only these pages to a PDF.
  void TakePages(const PageRange& range) { range_ = range; }
  /// Gives the rows of the next run instead of its table, and the columns that a list leaves out.
  /// \param of  the campaign of the rows, which may no longer be the current one
  void FeedNextRun(Recordset rows, QSet<QString> hiddenColumns, CurrentCampaign of);

 private:
  bool Step(const std::function<void()>& step);
  [[nodiscard]] bool IgnoreError(qint64 number, const QString& description, bool& repeat);
  bool InitialiseReport(const QString& path);
  void ConnectTables(const QString& path);
  void TakeValues(const QString& path, ReportMode mode, const ReportRunValues& values);
  bool FillReport();
  bool ApplyFilter();
  void Deliver(ReportMode mode, bool prompt);
  void WritePdfFile(ConnectedRows& database);
  void Say(const QString& text) const;
  [[nodiscard]] ReportFacts Facts() const;
  void EndRun();

  ReportPrinterParts parts_;
  std::optional<Report> report_;
  TakenOut taken_;
  ReportOutcome outcome_ = ReportOutcome::kFailed;
  PageProgress onPage_;
  ReportFollower nobody_;
  ReportFollower* follower_ = nullptr;
  PageRange range_;
  std::optional<Recordset> rows_;
  QSet<QString> hiddenColumns_;
  std::optional<CurrentCampaign> campaignOfRows_;
};

}  // namespace qbx
