#include "letters/letter_run.h"

#include <QTextDocument>
#include <algorithm>
#include <cmath>

#include "dispatch/mailshot_checks.h"
#include "letters/letter_rows.h"
#include "letters/letters_table.h"
#include "merge/compiled_template.h"
#include "printing/report_files.h"
#include "results/merge_row.h"
#include "rtf/rtf_reader.h"

namespace qbx {

namespace {

constexpr int kCreateLocation = 4300;
constexpr int kMarkLocation = 4301;

/// Letters between two steps of the progress: a fortieth of them, at least 3 and at most 40.
int UpdateInterval(int letters) {
  return std::clamp(static_cast<int>(std::nearbyint(letters / 40.0)), 3, 40);
}

QString ReopenLetters(int campaignId) {
  return QStringLiteral(
             "UPDATE [Campaign Results] SET Processed = 0 WHERE Processed = 1 AND Send_Letter = 1 AND Send_SMS = 0 AND Send_Email = 0 AND CampaignID = %1")
      .arg(campaignId);
}

LetterRow LetterOf(const Recordset& row, const QString& merged) {
  const auto text = [&row](const char* column) { return row.Field(QString::fromLatin1(column)).ToText(); };
  return {.letter = merged,
          .nameAddress = NameLine(row) + u'\r' + text("Address"),
          .contact = text("Contact"),
          .telephone = text("Telephone"),
          .mobile = text("Mobile"),
          .vehicle = text("Vehicle")};
}

/// Writes in batches: a few writes a commit, and what was written before a failure stays.
class Batches {
 public:
  explicit Batches(Session& session) : session_(session) { transaction_.emplace(session); }
  ~Batches() {
    try {
      Commit();
    } catch (const DatabaseError&) {
      // The failure that ended the run is the one that is told.
    }
  }
  Batches(const Batches&) = delete;
  Batches& operator=(const Batches&) = delete;

  void Next() {
    Commit();
    transaction_.emplace(session_);
  }

 private:
  void Commit() {
    if (transaction_) transaction_->Commit();
    transaction_.reset();
  }

  Session& session_;
  std::optional<Transaction> transaction_;
};

}  // namespace

LetterRun::LetterRun(const LetterServices& services, LetterObserver& observer)
    : services_(services),
      observer_(observer),
      journal_(services.statements.Shared(), services.startup.user),
      refusals_(services.statements.Shared()) {}

LetterSummary LetterRun::GenerateLetters(int campaignId, const QString& letter, const LetterChoices& choices) {
  summary_ = {};
  services_.events.LogMarketingEvent(QStringLiteral("Generate Letters"));
  services_.counters.UpdateCounters(campaignId);
  if (!MayBegin(letter)) return summary_;
  CampaignClaim claim(services_.statements.Shared(), services_.host, services_.diagnostics.clock,
                      services_.startup.user);
  try {
    if (const auto holder = claim.Take(campaignId)) {
      services_.diagnostics.ui.ShowMessage(ClaimedMessage(*holder));
      return summary_;
    }
    if (!AskAboutProcessed(campaignId)) return summary_;
  } catch (const DatabaseError& error) {
    services_.diagnostics.errors.ShowError(kCreateLocation, QStringLiteral("CreateLetters"), error.Description());
    return summary_;
  }
  summary_.done = MakeLetters(campaignId, letter) && OpenLetterReport(choices);
  if (summary_.done && !choices.pdfFile.isEmpty())
    summary_.letters = static_cast<int>(services_.reports.Taken().documents.size());
  const bool marks = summary_.done && choices.markProcessed;
  if (marks || again_) MarkLettersAsProcessed(campaignId, marks);
  return summary_;
}

/// \return false when there is none to show; the user was told
bool LetterRun::MakeLetters(int campaignId, const QString& letter) {
  try {
    if (CountLetters(campaignId) == 0) {
      Tell(
          QStringLiteral(
              "There are not results selected to be processed as letters, or all selected results have already been processed."),
          MessageIcon::kInformation);
      return false;
    }
    const std::optional<Message> question = LetterQuestion(LetterText(letter));
    if (question && services_.diagnostics.ui.ShowMessage(*question) != MessageAnswer::kYes) return false;
    services_.resultsLog.LogProcessResult(QStringLiteral("Creating Letters"));
    if (!CreateLetters(campaignId, letter)) return false;
  } catch (const DatabaseError& error) {
    services_.diagnostics.errors.ShowError(kCreateLocation, QStringLiteral("CreateLetters"), error.Description());
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

/// Asks whether letters that went out are made again; only when there are some.
/// \return false when it failed
bool LetterRun::AskAboutProcessed(int campaignId) {
  Connection& connection = services_.statements.Shared();
  const Recordset counts = Procedure(connection, "proc_selp_Letter_Counts").Open({{"@CampaignID", campaignId}});
  if (counts.Eof() || counts.Field(QStringLiteral("Made")).ToInt() == 0) return true;
  const Message question{
      .text = QStringLiteral(
          "Do you want to generate letters for results which have been processed before as part of this campaign?"),
      .icon = MessageIcon::kQuestion,
      .buttons = MessageButtons::kYesNo,
      .question = Question::kLettersAgain,
      .defaultAnswer = MessageAnswer::kNo};
  if (services_.diagnostics.ui.ShowMessage(question) != MessageAnswer::kYes) return true;
  again_ = services_.statements.dbExecute(ReopenLetters(campaignId)).Ok();
  return again_;
}

/// Whether the letter of a row went out before this run.
bool LetterRun::WentOut(qint64 recordId) const {
  return before_.value(recordId).letter == JournalState::kSent;
}

/// Reads the rows, and counts those that are due: whose letter did not go out, or all of them when letters are made again.
int LetterRun::CountLetters(int campaignId) {
  before_ = journal_.Read(campaignId);
  if (services_.statements.dbOpenRecLong(rows_, SelectLetterRows(campaignId))) return 0;
  int count = 0;
  const int record = rows_.ColumnIndex(QStringLiteral("RecordID"));
  for (rows_.MoveFirst(); !rows_.Eof(); rows_.MoveNext())
    count += again_ || !WentOut(rows_.Field(record).ToInt()) ? 1 : 0;
  return count;
}

bool LetterRun::CreateLetters(int campaignId, const QString& letter) {
  Statements& statements = services_.statements;
  LettersTable letters(statements, services_.startup.RunKey);
  if (!letters.Begin()) return false;
  const int interval = UpdateInterval(services_.counters.Values().letters);
  CompiledTemplate merge(letter);
  QString merged;
  bool cancelled = false;
  observer_.Begins(services_.counters.Values().letters);
  {
    Batches batches(statements.Shared().Driver());
    for (rows_.MoveFirst(); !rows_.Eof() && !cancelled; rows_.MoveNext()) {
      if (!MayGetLetter(rows_, campaignId)) continue;
      merge.Merge(MergeRow(rows_, BlankContact::kBecomesCustomer), services_.diagnostics.clock.Today(), merged);
      letters.Add(LetterOf(rows_, merged));
      if (++summary_.letters % interval != 0) continue;
      batches.Next();
      observer_.Progress(summary_.letters);
      services_.diagnostics.ui.PumpEvents();
      cancelled = observer_.Cancelled();
    }
  }
  observer_.Ends();
  rows_.Close();
  if (!cancelled) return true;
  services_.resultsLog.LogProcessResult(QStringLiteral("Creating Letters was cancelled"));
  return false;
}

bool LetterRun::MayGetLetter(const Recordset& row, int campaignId) {
  const qint64 recordId = row.Field(QStringLiteral("RecordID")).ToInt();
  if (WentOut(recordId) && !again_) return false;
  const QString problem = AddressProblem(row.Field(QStringLiteral("Address")).ToText());
  if (!problem.isEmpty()) {
    LeaveOut(row, problem);
    return false;
  }
  // What went out stays on record as that, whether this copy of it is printed or not.
  const bool mayBegin =
      !WentOut(recordId) && journal_.Write(recordId, campaignId, Channel::kLetter, JournalState::kSending);
  const QString refusal = mayBegin ? QString() : RefusalText(refusals_.OfRow(recordId).letter, Channel::kLetter);
  if (mayBegin || (WentOut(recordId) && refusal.isEmpty())) {
    made_.push_back(recordId);
    return true;
  }
  LeaveOut(row, refusal.isEmpty() ? QStringLiteral("The row was changed meanwhile at another desk.") : refusal);
  return false;
}

void LetterRun::LeaveOut(const Recordset& row, const QString& reason) {
  ++summary_.leftOut;
  services_.resultsLog.LogProcessResult(
      QStringLiteral("No letter for customer %1 (%2): %3")
          .arg(row.Field(QStringLiteral("Customer")).ToText(), NameLine(row), reason));
}

/// \return whether the letters came out, or the user says so
bool LetterRun::OpenLetterReport(const LetterChoices& choices) {
  services_.reports.state.pdfFileName = choices.pdfFile;
  services_.reports.TakePages({.firstDocument = choices.firstLetter, .lastDocument = choices.lastLetter});
  const ReportMode mode = choices.pdfFile.isEmpty() ? ReportMode::kPreview : ReportMode::kPdf;
  const QString path = LetterReportPath(services_.startup.ProgramFolder, services_.options);
  services_.reports.OnPage([this](const ReportPage& page) {
    for (const QString& text : TextsThatDoNotFit(page))
      services_.resultsLog.LogProcessResult(
          QStringLiteral("The letter of %1 does not fit its place: look at it before it goes.").arg(text));
    return true;
  });
  switch (services_.reports.PrintReport(path, mode, true, {Value(QString())})) {
    case ReportOutcome::kOut:
      return true;
    case ReportOutcome::kFailed:
      return false;
    case ReportOutcome::kLookedAt:
      break;
  }
  const Message question{.text = QStringLiteral("The letters were neither printed nor saved. Mark them as processed?"),
                         .icon = MessageIcon::kQuestion,
                         .buttons = MessageButtons::kYesNo,
                         .defaultAnswer = MessageAnswer::kNo};
  marksAll_ = services_.diagnostics.ui.ShowMessage(question) == MessageAnswer::kYes;
  return marksAll_;
}

/// Marks the rows that are done with their letter, those that were reopened and got none this time included.
/// \param cameOut  first writes down that the letters went out which were printed or saved
void LetterRun::MarkLettersAsProcessed(int campaignId, bool cameOut) {
  Connection& connection = services_.statements.Shared();
  int sent = 0;
  try {
    Transaction transaction(connection.Driver());
    for (size_t i = 0; cameOut && i < made_.size(); ++i)
      if (marksAll_ || services_.reports.Taken().Holds(static_cast<int>(i) + 1))
        sent += journal_.Write(made_[i], campaignId, Channel::kLetter, JournalState::kSent) ? 1 : 0;
    const Recordset marked = Procedure(connection, "proc_updp_Letters_Processed").Open({{"@CampaignID", campaignId}});
    transaction.Commit();
    if (!cameOut) return;
    summary_.processed = static_cast<int>(marked.RecordCount());
    services_.resultsLog.LogProcessResult(
        QStringLiteral("Letters that went out: %1, rows marked as processed: %2").arg(sent).arg(summary_.processed));
  } catch (const DatabaseError& error) {
    services_.diagnostics.errors.ShowError(kMarkLocation, QStringLiteral("MarkLettersAsProcessed"),
                                           error.Description());
  }
  services_.counters.UpdateCounters(campaignId);
}

void LetterRun::Tell(const QString& text, MessageIcon icon) {
  services_.diagnostics.ui.ShowMessage({.text = text, .icon = icon});
}

QString LetterText(const QString& letter) {
  QTextDocument document;
  static_cast<void>(ReadRtf(letter, document));
  return document.toPlainText();
}

QString LettersMissedLine(Connection& connection, int campaignId) {
  const Recordset counts = Procedure(connection, "proc_selp_Letter_Counts").Open({{"@CampaignID", campaignId}});
  const qint64 missed = counts.Eof() ? 0 : counts.Field(QStringLiteral("By_Mailshot")).ToInt();
  if (missed == 0) return {};
  if (missed == 1)
    return QStringLiteral("1 customer with a letter was processed by the mailshot and gets none; make letters first.");
  return QStringLiteral("%1 customers with a letter were processed by the mailshot and get none; make letters first.")
      .arg(missed);
}

}  // namespace qbx
