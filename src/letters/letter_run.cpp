#include "letters/letter_run.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "dispatch/mailshot_checks.h"
#include "letters/batches.h"
#include "letters/letter_rows.h"
#include "merge/compiled_template.h"
#include "printing/report_fields.h"
#include "printing/report_files.h"
#include "results/merge_row.h"

namespace qbx {

namespace {

constexpr int kCreateLocation = 4300;
constexpr int kMarkLocation = 4301;

/// Number of letters between two steps of the progress: a fortieth of all, at least 3 and at most 40.
int UpdateInterval(int letters) {
  return std::clamp(static_cast<int>(std::nearbyint(letters / 40.0)), 3, 40);
}

/// Shows the progress as long as it lives.
class ShownProgress {
 public:
  ShownProgress(LetterObserver& observer, int total) : observer_(observer) { observer_.Begins(total); }
  ~ShownProgress() { observer_.Ends(); }
  ShownProgress(const ShownProgress&) = delete;
  ShownProgress& operator=(const ShownProgress&) = delete;

 private:
  LetterObserver& observer_;
};

}  // namespace

LetterRun::LetterRun(const LetterServices& services, LetterObserver& observer)
    : services_(services),
      observer_(observer),
      journal_(services.statements.Shared(), services.startup.user),
      refusals_(services.statements.Shared()),
      letterMarks_(services.statements.Shared(), services.startup.user),
      claim_(services.statements.Shared(), services.host, services.diagnostics.clock, services.startup.user) {}

LetterSummary LetterRun::GenerateLetters(int campaignId, const QString& letter, const LetterChoices& choices) {
  const Statements::Telling once(services_.statements, Statements::Tells::kLossOnce);
  summary_ = {};
  campaignId_ = campaignId;
  marks_ = choices.markProcessed;
  services_.events.LogMarketingEvent(QStringLiteral("Generate Letters"));
  const int cancellations = services_.statements.Cancellations();
  services_.counters.UpdateCounters(campaignId);
  if (services_.statements.Shared().IsAway() || services_.statements.Cancellations() != cancellations)
    return summary_;  // as the counters have told
  if (!MayBegin(letter)) return summary_;
  try {
    if (const auto holder = claim_.Take(campaignId)) {
      services_.diagnostics.ui.ShowMessage(ClaimedMessage(*holder));
      return summary_;
    }
    if (!SettleDoubt()) return summary_;
    again_ = AskForAgain();
  } catch (const DatabaseError& error) {
    services_.statements.ShowFailure(kCreateLocation, QStringLiteral("CreateLetters"), error);
    return summary_;
  }
  LettersTable letters(services_.statements, services_.startup.RunKey);
  if (MakeLetters(letter, letters)) {
    const TakenOut taken = OpenLetterReport(choices);
    summary_.done = taken.Any() && (!marks_ || MarkLettersAsProcessed(taken));
    if (!taken.all) summary_.letters = static_cast<int>(taken.documents.size());
  }
  letters.Clear();
  return summary_;
}

/// \return false when there is no letter to show; the user was told
bool LetterRun::MakeLetters(const QString& letter, LettersTable& letters) {
  try {
    if (CountLetters() == 0) {
      Tell(
          QStringLiteral(
              "There are not results selected to be processed as letters, or all selected results have already been processed."),
          MessageIcon::kInformation);
      return false;
    }
    const std::optional<Message> question = LetterQuestion(LetterText(letter));
    if (question && services_.diagnostics.ui.ShowMessage(*question) != MessageAnswer::kYes) return false;
    services_.resultsLog.LogProcessResult(QStringLiteral("Creating Letters"));
    if (!CreateLetters(letter, letters)) return false;
  } catch (const DatabaseError& error) {
    services_.statements.ShowFailure(kCreateLocation, QStringLiteral("CreateLetters"), error);
    return false;
  }
  if (summary_.letters == 0) {
    Tell(QStringLiteral("No letter was made. The results log says why each customer who is left gets none."),
         MessageIcon::kInformation);
    return false;
  }
  services_.resultsLog.LogProcessResult(QStringLiteral("Generating Print Preview"));
  return true;
}

bool LetterRun::MayBegin(const QString& letter) {
  if (!MaySend(services_.options, services_.startup.user)) {
    services_.events.LogMarketingEvent(QStringLiteral("Not a Manager User"));
    services_.diagnostics.ui.ShowMessage(NotManagerMessage());
    return false;
  }
  if (services_.counters.Values().letters == 0) {
    Tell(QStringLiteral("No Letters to process. No customers in the results list are selected to receive a letter."),
         MessageIcon::kInformation);
    return false;
  }
  if (LetterText(letter).trimmed().isEmpty()) {
    Tell(QStringLiteral("No letter text has been entered on the Letter Templates tab."), MessageIcon::kInformation);
    return false;
  }
  return true;
}

/// Asks about the letters that an earlier run may have saved to a file or printed.
/// \return false when the user does not know yet
bool LetterRun::SettleDoubt() {
  const LettersInDoubt doubt = letterMarks_.InDoubt(campaignId_);
  if (doubt.rows.empty()) return true;
  switch (services_.diagnostics.ui.ShowMessage(LettersInDoubtQuestion(doubt))) {
    case MessageAnswer::kYes:
      summary_.processed += letterMarks_.WentOut(campaignId_, doubt.rows).processed;
      return true;
    case MessageAnswer::kNo:
      letterMarks_.NotOut(campaignId_, doubt.rows);
      return true;
    default:
      return false;
  }
}

/// If letters went out already, asks whether they are made again.
bool LetterRun::AskForAgain() {
  if (ReadLetterCounts(services_.statements.Shared(), campaignId_).wentOut == 0) return false;
  const Message question{
      .text = QStringLiteral(
          "Do you want to generate letters for results which have been processed before as part of this campaign?"),
      .icon = MessageIcon::kQuestion,
      .buttons = MessageButtons::kYesNo,
      .question = Question::kLettersAgain,
      .defaultAnswer = MessageAnswer::kNo};
  return services_.diagnostics.ui.ShowMessage(question) == MessageAnswer::kYes;
}

/// Reads the rows and counts the ones that are due: whose letter did not go out, or all rows when letters are made
/// again. Logs how many of them cannot get a letter.
int LetterRun::CountLetters() {
  before_ = journal_.Read(campaignId_);
  if (services_.statements.dbOpenRecLong(rows_, SelectLetterRows(campaignId_, again_))) return 0;
  int count = 0;
  int withoutAddress = 0;
  for (rows_.MoveFirst(); !rows_.Eof(); rows_.MoveNext()) {
    if (!again_ && WentOut(rows_)) continue;
    ++count;
    withoutAddress += AddressProblem(rows_.Field(QStringLiteral("Address")).ToText()).isEmpty() ? 0 : 1;
  }
  if (withoutAddress > 0)
    services_.resultsLog.LogProcessResult(
        QStringLiteral("Customers without an address or a postcode, who get no letter: %1").arg(withoutAddress));
  return count;
}

bool LetterRun::WentOut(const Recordset& row) const {
  return row.Field(QStringLiteral("Processed")).ToBool() ||
         before_.value(row.Field(QStringLiteral("RecordID")).ToInt()).letter == JournalState::kSent;
}

bool LetterRun::CreateLetters(const QString& letter, LettersTable& letters) {
  if (!letters.Begin(services_.diagnostics.clock.Today())) return false;
  const int total = services_.counters.Values().letters;
  const int interval = UpdateInterval(total);
  CompiledTemplate merge(letter);
  QString merged;
  bool cancelled = false;
  {
    const ShownProgress shown(observer_, total);
    Batches batches(services_.statements.Shared());
    for (rows_.MoveFirst(); !rows_.Eof() && !cancelled; rows_.MoveNext()) {
      if (!MayGetLetter(rows_)) continue;
      merge.Merge(MergeRow(rows_, BlankContact::kBecomesCustomer), services_.diagnostics.clock.Today(), merged);
      letters.Add(LetterOf(rows_, merged));
      if (++summary_.letters % interval != 0) continue;
      batches.Between([&] {
        observer_.Progress(summary_.letters);
        services_.diagnostics.ui.PumpEvents();
        cancelled = observer_.Cancelled() || !MayGoOn();
      });
    }
    batches.Finish();
  }
  rows_.Close();
  keys_ = letters.Keys();
  if (cancelled) services_.resultsLog.LogProcessResult(QStringLiteral("Creating Letters was cancelled"));
  return !cancelled;
}

bool LetterRun::MayGetLetter(const Recordset& row) {
  const bool wentOut = WentOut(row);
  if (wentOut && !again_) return false;
  const QString problem = AddressProblem(row.Field(QStringLiteral("Address")).ToText());
  if (!problem.isEmpty()) {
    LeaveOut(row, problem);
    return false;
  }
  const qint64 recordId = row.Field(QStringLiteral("RecordID")).ToInt();
  // A letter that went out keeps its record, whether or not this copy is printed.
  const bool begins = !wentOut && journal_.Write(recordId, campaignId_, Channel::kLetter, JournalState::kSending);
  const std::optional<RowRefusals> refusals = begins ? std::nullopt : refusals_.OfRow(recordId);
  if (begins || (wentOut && refusals && refusals->letter == Refusal::kNone)) {
    made_.push_back(recordId);
    return true;
  }
  const QString refusal = refusals ? RefusalText(refusals->letter, Channel::kLetter) : QString();
  LeaveOut(row, refusal.isEmpty() ? QStringLiteral("The row was changed meanwhile at another desk.") : refusal);
  return false;
}

void LetterRun::LeaveOut(const Recordset& row, const QString& reason) {
  ++summary_.leftOut;
  const QString name = NameLine(row);
  services_.resultsLog.LogProcessResult(QStringLiteral("No letter for customer %1%2: %3")
                                            .arg(row.Field(QStringLiteral("Customer")).ToText(),
                                                 name.isEmpty() ? name : QStringLiteral(" (%1)").arg(name), reason));
}

void LetterRun::LogExport(const QString& path) {
  services_.events.LogMarketingEvent(QStringLiteral("Export Letters"));
  services_.events.LogEvent(kEventPrint, 0, QStringLiteral("EXPORT"), QStringLiteral("File:") + ReportFileTitle(path));
}

/// \return what was printed or saved; everything when the user says so
TakenOut LetterRun::OpenLetterReport(const LetterChoices& choices) {
  ReportPrinter& reports = services_.reports;
  reports.state.pdfFileName = choices.pdfFile;
  reports.TakePages({.firstDocument = choices.firstLetter, .lastDocument = choices.lastLetter});
  const ReportMode mode = choices.pdfFile.isEmpty() ? ReportMode::kPreview : ReportMode::kPdf;
  const QString path = LetterReportPath(services_.startup.ProgramFolder, services_.options);
  if (mode == ReportMode::kPdf) LogExport(path);
  reports.OnPage([this](const ReportPage& page) {
    for (const QString& text : TextsThatDoNotFit(page))
      services_.resultsLog.LogProcessResult(
          QStringLiteral("The letter of %1 does not fit its place: look at it before it goes.").arg(text));
    return true;
  });
  reports.Follow(*this);
  const ReportOutcome outcome = reports.PrintReport(path, mode, true, {Value(QString())});
  if (mode == ReportMode::kPreview || outcome == ReportOutcome::kFailed) NotOut();
  switch (outcome) {
    case ReportOutcome::kOut:
      return reports.Taken();
    case ReportOutcome::kFailed:
      return {};
    case ReportOutcome::kLookedAt:
      break;
  }
  if (lost_) return {};                 // another run makes these letters now
  if (!mayBeOut_.isEmpty()) return {};  // the next run asks
  const Message question{.text = QStringLiteral("The letters were neither printed nor saved. Mark them as processed?"),
                         .icon = MessageIcon::kQuestion,
                         .buttons = MessageButtons::kYesNo,
                         .defaultAnswer = MessageAnswer::kNo};
  return {.all = services_.diagnostics.ui.ShowMessage(question) == MessageAnswer::kYes};
}

/// The rows whose letters came out and are not yet recorded as sent.
std::vector<qint64> LetterRun::RowsOf(const TakenOut& taken) const {
  std::vector<qint64> rows;
  for (size_t i = 0; i < made_.size(); ++i)
    if (taken.Holds(keys_.value(static_cast<qsizetype>(i))) && !sent_.contains(made_[i])) rows.push_back(made_[i]);
  return rows;
}

void LetterRun::AboutToGoOut(const TakenOut& taken, const ReportPlace& place) {
  if (!marks_) return;
  // The claim may have expired since the last letter was made.
  if (!MayGoOn()) throw ReportCancelled{};
  NotOut();
  announced_ = RowsOf(taken);
  LeaveInDoubt();
  letterMarks_.AboutToGoOut(campaignId_, announced_, place);
}

/// Keeps rows whose letter may be out from being recorded as not out, also when it is printed again in vain.
void LetterRun::LeaveInDoubt() {
  std::erase_if(announced_, [this](qint64 row) { return mayBeOut_.contains(row); });
}

/// Records that the announced letters did not go out, except for rows whose letter may be out.
void LetterRun::NotOut() {
  if (announced_.empty()) return;
  try {
    letterMarks_.NotOut(campaignId_, std::exchange(announced_, {}));
  } catch (const DatabaseError& error) {
    services_.statements.ShowFailure(kMarkLocation, QStringLiteral("MarkLettersAsProcessed"), error);
  }
}

void LetterRun::MayBeOut() {
  mayBeOut_ += QSet<qint64>(announced_.begin(), announced_.end());
  LeaveInDoubt();
}

void LetterRun::TookOut(const TakenOut& taken) {
  if (!marks_) return;
  const std::vector<qint64> rows = RowsOf(taken);
  mayBeOut_ += QSet<qint64>(rows.begin(), rows.end());
  LeaveInDoubt();
  MarkLettersAsProcessed(taken);
}

/// Renews the claim on the campaign, also while the letters are only looked at.
bool LetterRun::MayGoOn() {
  try {
    lost_ = lost_ || !claim_.Renew();
  } catch (const DatabaseError& error) {
    if (claim_.IsFresh()) return !lost_;  // the next important statement fails, too, and reports it
    Tell(QStringLiteral(
             "It could not be told whether another run took the campaign over, so no letter was printed.\r\r") +
             error.Description(),
         MessageIcon::kExclamation);
    return false;
  }
  if (lost_)
    Tell(
        QStringLiteral(
            "These letters may not be printed any more: the computer was silent for so long that another run took the campaign over."),
        MessageIcon::kExclamation);
  return !lost_;
}

/// Records the letters that came out since the last call.
/// \return false when it failed (already reported)
bool LetterRun::MarkLettersAsProcessed(const TakenOut& taken) {
  bool done = false;
  try {
    const LetterMarks::Marked marked = letterMarks_.WentOut(campaignId_, RowsOf(taken));
    if (!marked.rows.isEmpty())
      services_.resultsLog.LogProcessResult(QStringLiteral("Letters that went out: %1, rows marked as processed: %2")
                                                .arg(marked.rows.size())
                                                .arg(marked.processed));
    summary_.processed += marked.processed;
    sent_ += marked.rows;
    done = true;
  } catch (const DatabaseError& error) {
    services_.statements.ShowFailure(kMarkLocation, QStringLiteral("MarkLettersAsProcessed"), error);
  }
  services_.counters.UpdateCounters(campaignId_);
  return done;
}

void LetterRun::Tell(const QString& text, MessageIcon icon) {
  services_.diagnostics.ui.ShowMessage({.text = text, .icon = icon});
}

}  // namespace qbx
