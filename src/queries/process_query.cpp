#include "queries/process_query.h"

#include <atomic>
#include <exception>
#include <memory>

#include "campaigns/campaign_record.h"
#include "database/server_errors.h"
#include "queries/date_check.h"
#include "queries/plain_messages.h"
#include "queries/starting_queries.h"
#include "settings/options.h"

namespace qbx {

namespace {

constexpr int kCommandTimeoutSeconds = 40;
constexpr int kReadAheadPauseMs = 250;
constexpr char kRoutine[] = "ProcessQuery";
constexpr char kResultsTable[] = "Campaign Results";
constexpr char kResultsKey[] = "RecordID";

/// Thrown when the user pressed Cancel in the status box.
struct QueryCancelled : std::exception {};

/// Shows the hourglass; its destructor ends hourglass and status box, even after an exception.
class BusyScope {
 public:
  explicit BusyScope(Diagnostics& diagnostics) : diagnostics_(diagnostics) {
    diagnostics_.ui.SetBusy(true);
    diagnostics_.ui.PumpEvents();
  }
  ~BusyScope() {
    diagnostics_.status.Close();
    diagnostics_.ui.SetBusy(false);
  }
  BusyScope(const BusyScope&) = delete;
  BusyScope& operator=(const BusyScope&) = delete;

 private:
  Diagnostics& diagnostics_;
};

bool IsAlive(Connection& connection) {
  return connection.IsOpen() && connection.Driver().IsAlive();
}

qint64 CountRows(RowSource* source) {
  qint64 rows = 0;
  while (source && source->Next())
    ++rows;
  return rows;
}

/// Deletes the rows that may not be contacted from the recordset, which deletes them from the table.
void PruneRows(Recordset& rows, const ConsentRule& rule, const std::atomic<bool>& cancelled) {
  const int consent = rows.ColumnIndex(QStringLiteral("Consent_Response"));
  const int sms = rows.ColumnIndex(QStringLiteral("Can_Send_SMS"));
  const int email = rows.ColumnIndex(QStringLiteral("Can_Send_Email"));
  const int letter = rows.ColumnIndex(QStringLiteral("Can_Send_Letter"));
  rows.DeleteRows([&](const StoredRow& row) {
    if (cancelled) throw QueryCancelled();
    const auto field = [&row](int column) { return column < 0 ? Value::Null() : row.At(column).ToValue(); };
    return rule.Removes(field(consent).ToInt(), field(sms).ToBool(), field(email).ToBool(), field(letter).ToBool());
  });
}

}  // namespace

struct QueryProcessor::RunState {
  std::atomic<bool> cancelled = false;
  std::atomic<bool> commitStarted = false;
};

struct QueryProcessor::PassCounts {
  qint64 selected = 0;
  qint64 remaining = 0;
  std::optional<ReasonCounts> reasons;
};

QString RecordsFoundText(qint64 records) {
  return QLatin1String("Records found: ") + QString::number(records);
}

bool ConsentRule::Removes(qint64 consentResponse, bool canSendSms, bool canSendEmail, bool canSendLetter) const {
  constexpr qint64 kConsented = 1;
  if (!onlyOptedIn) return false;
  if (consentResponse != kConsented) return true;
  return usingPlatform && !canSendSms && !canSendEmail && !canSendLetter;
}

QueryProcessor::QueryProcessor(Statements& statements, const Options& options, const QString& user,
                               const CurrentCampaign& campaign, QueryOptions& queryOptions, const Filters& filters,
                               RecordLabels& records, LeftOut& leftOut, Diagnostics diagnostics)
    : statements_(statements),
      options_(options),
      user_(user),
      campaign_(campaign),
      queryOptions_(queryOptions),
      filters_(filters),
      records_(records),
      leftOut_(leftOut),
      diagnostics_(diagnostics) {}

QueryOutcome QueryProcessor::ProcessQuery(int step, bool applyFilters) {
  const Pass pass{.kind = step == 0 ? QueryPass::kStart : QueryPass::kFilter, .applyFilters = applyFilters};
  return Run(std::span(&pass, 1));
}

QueryOutcome QueryProcessor::Refresh() {
  static constexpr Pass kPasses[] = {{QueryPass::kStart, true}, {QueryPass::kFilter, false}};
  return Run(kPasses);
}

std::optional<Message> QueryProcessor::Refusal() {
  if (options_.ReadFailed) return WarningMessage(QString::fromLatin1(kOptionsUnreadText));
  const int query = campaign_.record.CampaignTypeID;
  if (QueryProcedure(QueryPass::kStart, query, filters_).isEmpty())
    return WarningMessage(QStringLiteral("Invalid Campaign Type Selected."));
  // The steps of a loaded campaign are complete, but the date texts that the check of step 1 makes are missing.
  const bool textsMissing = queryOptions_.FromDateText.isEmpty() || queryOptions_.ToDateText.isEmpty();
  if (HasDateCheck(query) && textsMissing && !CheckQueryDates(query, queryOptions_, diagnostics_.clock.Today()))
    return WarningMessage(QStringLiteral("Dates are not valid."));
  return CheckReminder(*FindStartingQuery(query), queryOptions_);
}

QueryOutcome QueryProcessor::Run(std::span<const Pass> passes) {
  if (const std::optional<Message> refusal = Refusal()) {
    diagnostics_.ui.ShowMessage(*refusal);
    return QueryOutcome::kFailed;
  }
  const RecordLabels before = records_;
  const LeftOut leftOutBefore = leftOut_;
  QueryOutcome outcome = QueryOutcome::kFailed;
  std::optional<QString> failure;
  {
    BusyScope busy(diagnostics_);
    try {
      outcome = RunWithReopen(passes);
    } catch (const DatabaseError& error) {
      failure = error.Description();
    } catch (const std::exception& error) {
      failure = QString::fromUtf8(error.what());
    }
  }
  if (outcome != QueryOutcome::kDone) {
    records_ = before;
    leftOut_ = leftOutBefore;
  }
  if (failure) diagnostics_.errors.ShowError(0, QString::fromLatin1(kRoutine), *failure);
  return outcome;
}

// A lost connection and a deadlock end the transaction, so the run is repeated once from its start. When the connection
// is lost after the commit was requested, it is unknown whether it was made, so the failure is reported instead.
QueryOutcome QueryProcessor::RunWithReopen(std::span<const Pass> passes) {
  Connection& connection = statements_.Shared();
  if (!connection.WasOpen())
    throw DatabaseError(kUnspecifiedError, QStringLiteral("There is no connection to the database."), {});
  connection.SetCommandTimeout(kCommandTimeoutSeconds);
  const int cancellations = statements_.Cancellations();
  for (bool repeated = false;; repeated = true) {
    RunState run;
    try {
      if (connection.ReopenIfLost()) diagnostics_.log.WriteLog(QStringLiteral("No DB Connection - reconnecting"));
      return RunPasses(passes, run);
    } catch (const QueryCancelled&) {
      return QueryOutcome::kCancelled;
    } catch (const DatabaseError& error) {
      if (run.cancelled || (!run.commitStarted && CancelPressed())) return QueryOutcome::kCancelled;
      const bool refused = statements_.Cancellations() != cancellations;  // by the user, before the query began
      const bool undone = IsDeadlock(error) || (!run.commitStarted && !IsAlive(connection));
      if (repeated || refused || !undone) throw;
    }
  }
}

QueryOutcome QueryProcessor::RunPasses(std::span<const Pass> passes, RunState& run) {
  Connection& connection = statements_.Shared();
  std::unique_ptr<Transaction> transaction;
  const bool oneCount = passes.size() > 1 && OneCountForBothPasses(campaign_.record.CampaignTypeID, filters_);
  for (const Pass& pass : passes) {
    if (!Announce(pass)) return QueryOutcome::kFailed;
    const bool last = &pass == &passes.back();
    Command command = PreparePass(pass);
    const bool counted = pass.kind == QueryPass::kStart ? !oneCount : oneCount || AnyFilterNarrows(filters_);
    Command count = counted ? PrepareCount(pass) : Command();
    StopIfCancelled();
    PassCounts counts;
    const ConsentRule rule{
        .onlyOptedIn = options_.Only_Send_Comms_When_Opted_In && !(pass.kind == QueryPass::kStart && pass.applyFilters),
        .usingPlatform = options_.Using_Vrelo};
    const auto work = [&] {
      if (!transaction) transaction = std::make_unique<Transaction>(connection, Transaction::IfLost::kFail);
      if (!count.parameters.empty()) counts.reasons = ReadReasons(Recordset::ReadAll(count.Open()));
      if (rule.onlyOptedIn) {
        Recordset rows = Recordset::ReadAll(command.Open());
        rows.SetWritable(connection.Driver(), QString::fromLatin1(kResultsTable), QString::fromLatin1(kResultsKey));
        counts.selected = rows.RecordCount();
        PruneRows(rows, rule, run.cancelled);
        counts.remaining = rows.RecordCount();
      } else {
        counts.selected = counts.remaining = CountRows(command.Open().get());
      }
      if (run.cancelled) throw QueryCancelled();
      if (!last) return;
      run.commitStarted = true;
      transaction->Commit();
    };
    connection.RunLong(
        work, [this] { diagnostics_.ui.PumpEvents(); },
        [this, &run] {
          // A commit is never interrupted: nobody would know whether it was made.
          if (run.commitStarted) return false;
          if (diagnostics_.status.Cancelled()) run.cancelled = true;
          return run.cancelled.load();
        });
    ShowCounts(pass, counts);
    KeepLeftOut(pass, oneCount, counts);
  }
  return QueryOutcome::kDone;
}

/// \return false when a read before the query failed (already reported)
bool QueryProcessor::Announce(const Pass& pass) {
  StopIfCancelled();
  diagnostics_.status.ShowStatus(
      pass.applyFilters ? QStringLiteral("Applying Filters to the results") : QStringLiteral("Processing the Query"),
      true);
  if (pass.kind != QueryPass::kStart) return true;
  if (!ReadAhead()) return false;
  if (!pass.applyFilters) {
    diagnostics_.ui.Pause(kReadAheadPauseMs);
    StopIfCancelled();
    diagnostics_.status.ShowStatus(QStringLiteral("Selecting the records"), true);
  }
  return true;
}

/// Reads the tables that the procedure is about to use. The rows are not fetched.
bool QueryProcessor::ReadAhead() {
  static constexpr const char* kReads[] = {
      "SELECT Customer FROM Customers (NOLOCK)",
      "SELECT Invoice_Date, Customer FROM Services (NOLOCK) WHERE Record_Type = 0",
      "SELECT Vehicle, Make, Last_Mileage FROM Vehicles (NOLOCK)",
  };
  for (const char* read : kReads)
    if (!statements_.dbExecute(QString::fromLatin1(read), true).Ok()) return false;
  return true;
}

// A new status text clears the flag of the Cancel button, so the flag is checked first.
void QueryProcessor::StopIfCancelled() const {
  if (CancelPressed()) throw QueryCancelled();
}

bool QueryProcessor::CancelPressed() const {
  return diagnostics_.status.Visible() && diagnostics_.status.Cancelled();
}

QueryRequest QueryProcessor::Request() const {
  return {.CampaignTypeID = campaign_.record.CampaignTypeID, .campaignId = campaign_.record.ID, .user = user_};
}

/// \return a command without parameters when the procedure is missing
Command QueryProcessor::Prepare(const ProcedureCall& call) {
  Command command;
  statements_.PrepareCommand(command, call.procedure);
  if (command.parameters.empty()) return command;
  for (const NamedValue& parameter : call.parameters)
    command.SetParameter(parameter.name, parameter.value);
  return command;
}

Command QueryProcessor::PreparePass(const Pass& pass) {
  const ProcedureCall call = BuildQueryCall(pass.kind, Request(), queryOptions_, filters_);
  Command command = Prepare(call);
  if (!command.parameters.empty()) return command;
  const QString text = QStringLiteral("The stored procedure %1 is missing or could not be read.");
  throw DatabaseError(kItemNotFound, text.arg(call.procedure), {});
}

Command QueryProcessor::PrepareCount(const Pass& pass) {
  return Prepare(BuildLeftOutCall(pass.kind, Request(), queryOptions_, filters_));
}

/// \param ofBothPasses  whether the step-2 pass also counted what step 1 left out
void QueryProcessor::KeepLeftOut(const Pass& pass, bool ofBothPasses, const PassCounts& counts) {
  const bool start = pass.kind == QueryPass::kStart;
  if (start) leftOut_ = {};
  if (counts.reasons && (start || ofBothPasses)) leftOut_.before = MakeLeftOutBefore(*counts.reasons, counts_[0]);
  if (start)
    leftOut_.after = LeftOutAfter{.candidates = counts.selected};
  else if (counts.reasons || !AnyFilterNarrows(filters_))
    leftOut_.after = MakeLeftOutAfter(counts.reasons.value_or(ReasonCounts()), counts.selected,
                                      campaign_.record.CampaignTypeID, filters_);
  else
    leftOut_.after = std::nullopt;
  if (leftOut_.after) leftOut_.after->withoutConsent = counts.selected - counts.remaining;
}

void QueryProcessor::ShowCounts(const Pass& pass, const PassCounts& counts) {
  if (pass.kind == QueryPass::kStart) {
    counts_[0] = counts.selected;
    records_[0] = RecordsFoundText(counts.selected);
  }
  counts_[1] = counts.remaining;
  const bool awaitsFilters = pass.kind == QueryPass::kStart && pass.applyFilters;
  records_[1] = awaitsFilters ? QStringLiteral("Records found: ") : RecordsFoundText(counts.remaining);
}

}  // namespace qbx
