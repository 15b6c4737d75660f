#include "printing/print_report.h"

#include <QFileInfo>

#include "printing/empty_columns.h"
#include "reports/report_error.h"
#include "util/date_text.h"

namespace qbx {

namespace {

/// The number for an error without a provider's number.
constexpr int kReportFailed = 1;

constexpr char kOpening[] = "Generating the report";

QString DateText(const ReportRunValues& values, size_t index) {
  return index < values.size() ? DayText(values[index].ToDateTime().date()) : QString();
}

QString DetailsOf(const QString& reportName, const ReportRunValues& values) {
  QString details = QStringLiteral("File:%1, ").arg(reportName);
  for (size_t i = 0; i < values.size(); ++i) {
    const QString text = values[i].ToText();
    if (!text.isEmpty()) details += QStringLiteral("Param%1:%2 ").arg(i).arg(text);
  }
  return details;
}

/// The part after the last folder, without ".rpt".
QString NameOfReport(const QString& path) {
  const QString file = path.mid(std::max(path.lastIndexOf(u'\\'), path.lastIndexOf(u'/')) + 1);
  return file.endsWith(QLatin1String(".rpt"), Qt::CaseInsensitive) ? ReportFileTitle(file) : file;
}

}  // namespace

ReportOutcome ReportPrinter::PrintReport(const QString& path, ReportMode mode, bool prompt,
                                         const ReportRunValues& values) {
  if (!QFileInfo::exists(path)) {
    parts_.diagnostics.status.Close();
    Say(QStringLiteral("The document or report could not created because a file is missing.\r\rFile: %1").arg(path));
    EndRun();
    return ReportOutcome::kFailed;
  }
  if (mode == ReportMode::kPdf && state.pdfFileName.isEmpty()) {
    Say(QStringLiteral("Report to PDF but no PDF Filename Specified."));
    EndRun();
    return ReportOutcome::kFailed;
  }
  outcome_ = ReportOutcome::kFailed;
  taken_ = {};
  TakeValues(path, mode, values);
  parts_.diagnostics.ui.SetBusy(true);
  if (InitialiseReport(path) && FillReport() && ApplyFilter()) {
    if (state.landscape) report_->SetLandscape();
    parts_.diagnostics.ui.SetBusy(false);
    Step([&] { Deliver(mode, prompt); });
  }
  EndRun();
  return outcome_;
}

void ReportPrinter::TakeValues(const QString& path, ReportMode mode, const ReportRunValues& values) {
  state.reportName = NameOfReport(path);
  state.landscape = false;
  state.dateFromText = DateText(values, 1);
  state.dateToText = DateText(values, 2);
  state.recordType = values.empty() ? 0 : static_cast<int>(values.front().ToInt());
  parts_.events.LogEvent(kEventPrint, 0,
                         mode == ReportMode::kPdf ? QStringLiteral("PRINT-PDF") : QStringLiteral("PRINT"),
                         DetailsOf(state.reportName, values));
}

/// Opens the definition and connects its tables.
/// \return false when the run is to end
bool ReportPrinter::InitialiseReport(const QString& path) {
  if (!QFileInfo::exists(path)) Say(QStringLiteral("File not found: %1").arg(path));
  parts_.diagnostics.status.ShowStatus(QString::fromLatin1(kOpening));
  const bool goOn = Step([&] { report_.emplace(Report::Open(path)); });
  parts_.diagnostics.status.Close();
  if (!goOn) return false;
  if (!report_) {
    Say(QStringLiteral("Unable to generate the report at this time."));
    return false;
  }
  if (rows_) {
    hiddenColumns_ += EmptyColumns(*report_, *RowsOfRecordset(rows_->Clone()));
    report_->FeedFrom(std::move(*rows_));
    report_->HideColumns(hiddenColumns_);
  }
  ConnectTables(path);
  return true;
}

/// All tables are read over the connection to the host's database, so each is logged on as that connection is.
void ReportPrinter::ConnectTables(const QString& path) {
  ConnectedRows database(parts_.connection, parts_.diagnostics);
  const ConnectionTarget target = parts_.connection.Target();
  const QString noConnection = QStringLiteral("REPORT:NO-CONN");
  for (qsizetype i = 0; i < report_->Tables().size(); ++i) {
    if (database.TestConnectivity()) continue;
    parts_.events.LogEvent(kEventError, 0, noConnection, QStringLiteral("File: %1").arg(path));
    parts_.events.LogEvent(kEventError, 0, noConnection,
                           QStringLiteral("DB:%1 Server:%2").arg(target.database, target.server));
    Say(QStringLiteral("No report connection to the database."));
  }
}

bool ReportPrinter::FillReport() {
  for (const QString& field : report_->ParameterFields())
    if (!Step([&] { SetReportParameter(*report_, field, Facts()); })) return false;
  for (const QString& field : report_->FormulaFields())
    if (!Step([&] { SetReportFormula(*report_, field, Facts(), state); })) return false;
  parts_.diagnostics.status.Close();
  return true;
}

bool ReportPrinter::ApplyFilter() {
  if (state.tableLocationFilter.isEmpty()) return true;
  try {
    report_->SetTableLocations(state.tableLocationFilter);
    return true;
  } catch (const ReportError&) {
    Say(QStringLiteral("The Report '%1' does not support the specified filter.\r\rFilter: %2")
            .arg(state.reportName, state.tableLocationFilter));
    return false;
  }
}

void ReportPrinter::Deliver(ReportMode mode, bool prompt) {
  ConnectedRows database(parts_.connection, parts_.diagnostics);
  report_->HideColumns(EmptyColumns(*report_, database));
  if (mode == ReportMode::kPdf) return WritePdfFile(database);
  const ReportRun run{.report = *report_,
                      .database = database,
                      .caption = state.reportTitle.isEmpty() ? state.reportName : state.reportTitle,
                      .reportName = state.reportName,
                      .recordType = state.recordType,
                      .landscape = state.landscape,
                      .printer = parts_.userOptions.REPORT_PRINTER,
                      .follower = follower_ != nullptr ? *follower_ : nobody_};
  taken_ = mode == ReportMode::kPreview ? parts_.outlet.Preview(run) : parts_.outlet.Print(run, prompt);
  outcome_ = taken_.Any() ? ReportOutcome::kOut : ReportOutcome::kLookedAt;
}

void ReportPrinter::WritePdfFile(ConnectedRows& database) {
  const auto goesOn = [this] {
    parts_.diagnostics.ui.PumpEvents();
    return !parts_.diagnostics.status.Cancelled();
  };
  const auto progress = [&](const ReportPage& page) {
    taken_.Add(page);
    return goesOn() && (!onPage_ || onPage_(page));
  };
  const auto beforePlaced = [this] {
    taken_.all = range_.HoldsAll();
    if (follower_ != nullptr) follower_->AboutToGoOut(taken_, {.name = state.pdfFileName});
  };
  const PdfChoices choices{.title = state.reportTitle.isEmpty() ? state.reportName : state.reportTitle,
                           .range = range_,
                           .goesOn = goesOn,
                           .beforePlaced = beforePlaced};
  taken_ = {};
  std::unique_ptr<Pager> pager = report_->LayOut(database);
  parts_.diagnostics.status.ShowStatus(QString::fromLatin1(kOpening), true);
  if (ExportPdf(*report_, std::move(pager), state.pdfFileName, choices, progress)) outcome_ = ReportOutcome::kOut;
}

/// Runs a step, and repeats it when the user wants that.
/// \return false when the user ends the run
bool ReportPrinter::Step(const std::function<void()>& step) {
  for (bool repeat = true; repeat;) {
    repeat = false;
    bool goOn = true;
    try {
      step();
    } catch (const ReportError& error) {
      goOn = IgnoreError(kReportFailed, error.Description(), repeat);
    } catch (const DatabaseError& error) {
      parts_.connection.KeepErrors(error);
      goOn = IgnoreError(error.Number(), error.Description(), repeat);
    } catch (const ReportCancelled&) {
      return false;
    }
    if (!goOn) return false;
  }
  return true;
}

bool ReportPrinter::IgnoreError(qint64 number, const QString& description, bool& repeat) {
  parts_.diagnostics.status.Close();
  parts_.diagnostics.ui.SetBusy(false);
  const QString text =
      QStringLiteral("The following error has occured in PrintReport - %1 :  %2").arg(number).arg(description);
  parts_.diagnostics.log.WriteLog(text);
  const MessageAnswer answer = parts_.diagnostics.ui.ShowMessage({.text = text,
                                                                  .icon = MessageIcon::kStop,
                                                                  .buttons = MessageButtons::kAbortRetryIgnore,
                                                                  .title = QStringLiteral("Application Error"),
                                                                  .defaultAnswer = MessageAnswer::kAbort});
  repeat = answer == MessageAnswer::kRetry;
  return answer != MessageAnswer::kAbort;
}

void ReportPrinter::FeedNextRun(Recordset rows, QSet<QString> hiddenColumns, CurrentCampaign of) {
  rows_ = std::move(rows);
  hiddenColumns_ = std::move(hiddenColumns);
  campaignOfRows_ = std::move(of);
}

void ReportPrinter::Say(const QString& text) const {
  parts_.diagnostics.ui.ShowMessage({.text = text, .icon = MessageIcon::kExclamation});
}

ReportFacts ReportPrinter::Facts() const {
  const CurrentCampaign& campaign = campaignOfRows_ ? *campaignOfRows_ : parts_.campaign;
  return {parts_.startup, parts_.options, campaign, state, parts_.diagnostics.clock.Today()};
}

void ReportPrinter::EndRun() {
  parts_.diagnostics.status.Close();
  parts_.diagnostics.ui.SetBusy(false);
  report_.reset();
  rows_.reset();
  hiddenColumns_.clear();
  campaignOfRows_.reset();
  range_ = {};
  onPage_ = {};
  follower_ = nullptr;
  state.reportTitle.clear();
  state.pdfFileName.clear();
  state.tableLocationFilter.clear();
}

}  // namespace qbx
