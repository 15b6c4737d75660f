// Running a report: opened, connected, filled, then shown, printed or written to a PDF file.

#pragma once

#include <QSet>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

#include "database/event_log.h"
#include "diagnostics/diagnostics.h"
#include "printing/connected_rows.h"
#include "printing/report_fields.h"
#include "printing/report_state.h"
#include "printing/taken_out.h"
#include "reports/pdf_export.h"
#include "reports/report.h"
#include "settings/user_options.h"

namespace qbx {

enum class ReportMode { kPreview = 0, kPrint = 1, kPdf = 2 };

/// Told how a report fares while its window is open. Does nothing by itself.
class ReportFollower {
 public:
  virtual ~ReportFollower() = default;
  /// A PDF file is complete and takes its place next. What this throws leaves the file as it was, `ReportCancelled` without a word to the user.
  /// \param taken  all that stands in it
  virtual void AboutToAppear(const TakenOut& taken, const QString& file) {
    static_cast<void>(taken);
    static_cast<void>(file);
  }
  /// Something was printed or saved.
  /// \param taken  all that was until now
  virtual void TookOut(const TakenOut& taken) { static_cast<void>(taken); }
  /// Asked before something is printed or saved, and now and then in between.
  /// \return false when nothing more may come out; the user was told why
  [[nodiscard]] virtual bool MayGoOn() { return true; }
};

/// A report that is ready to be looked at or printed.
struct ReportRun {
  const Report& report;
  ReportDatabase& database;
  QString caption;  ///< the report's title, or its name
  QString reportName;
  int recordType = 0;
  bool landscape = false;
  QString printer;  ///< the user's printer for reports; empty: the system's default
  ReportFollower& follower;
};

/// What has become of a report.
enum class ReportOutcome {
  kFailed,    ///< it did not come out; the user was told why
  kLookedAt,  ///< its preview was closed, and it was neither printed nor saved
  kOut,       ///< it was printed, or written to a file
};

/// Where reports go that do not go to a file: windows, and the system's printers.
class ReportOutlet {
 public:
  virtual ~ReportOutlet() = default;
  /// Shows the report until the user closes it.
  /// \return what was printed or saved from there
  virtual TakenOut Preview(const ReportRun& run) = 0;
  /// \param prompt  asks for printer, copies and pages first
  /// \return what was printed
  /// \throws ReportError
  virtual TakenOut Print(const ReportRun& run, bool prompt) = 0;
};

/// Of a program that has neither windows nor printers.
class NoOutlet final : public ReportOutlet {
 public:
  TakenOut Preview(const ReportRun&) override { return {}; }
  TakenOut Print(const ReportRun&, bool) override { return {}; }
};

/// What running a report works with. References only.
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

/// One report at a time, from its definition to where it comes out. All outcomes are shown to the user.
class ReportPrinter {
 public:
  explicit ReportPrinter(const ReportPrinterParts& parts) : parts_(parts) {}

  /// The state that goes on from run to run; a caller sets the PDF file name and the filter before a run.
  ReportState state;

  /// \param prompt  of kPrint: whether the print dialog is shown first
  ReportOutcome PrintReport(const QString& path, ReportMode mode, bool prompt, const ReportRunValues& values);

  /// What the last run printed or saved.
  [[nodiscard]] const TakenOut& Taken() const { return taken_; }

  // What is set below holds for the next run alone.

  /// Told of each page that is written to a PDF; returns false to stop.
  void OnPage(PageProgress told) { onPage_ = std::move(told); }
  /// Told how the report fares.
  void Follow(ReportFollower& follower) { follower_ = &follower; }
  /// Writes only these pages to a PDF.
  void TakePages(const PageRange& range) { range_ = range; }
  /// Gives the rows of the next run, and which of their columns a list leaves out; its table is not read then.
  /// \param of  their campaign, which may not be the current one any more
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
