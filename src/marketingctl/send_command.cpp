// marketingctl send: the mailshot of a campaign.

#include <algorithm>
#include <memory>

#include "dispatch/reminders_over.h"
#include "dispatch/results_log_file.h"
#include "dispatch/send_journal.h"
#include "marketingctl/campaign_names.h"
#include "marketingctl/commands.h"
#include "marketingctl/output.h"

namespace qbx::ctl {

namespace {

struct SendArguments {
  std::string id;
  bool dryRun = false;
  bool yes = false;
  bool emailOnly = false;
  bool stopOnError = false;
  bool repeatDelivered = false;
  bool keepGoing = false;
  bool allowUnknownFields = false;
  bool nothingIsAnError = false;
};

/// Shows progress, turns Ctrl+C into a pause, and writes the results log.
class Watch final : public MailshotObserver {
 public:
  /// \param stopOnError  pause after the first row whose e-mail failed
  Watch(Program& program, RunLog* log, bool stopOnError) : program_(program), log_(log), stopOnError_(stopOnError) {}
  void SetRun(Mailshot* run) { run_ = run; }

  void Begins(bool resumed) override {
    if (log_) log_->Begin(program_.app.startup.user, program_.app.clock.Now(), resumed);
  }
  void Failed(Channel channel) override { emailFailed_ = emailFailed_ || channel == Channel::kEmail; }
  void At(MailshotPoint point, qint64) override {
    if (point != MailshotPoint::kRowFinished || paused_) return;
    // A failed e-mail pauses here, too: for an invalid address nobody is asked whether to cancel the queued e-mails.
    if (!HeadlessUi::Interrupted() && !(stopOnError_ && emailFailed_)) return;
    paused_ = true;
    run_->Pause();
  }
  void Progress(int done, int total) override { program_.ui.ShowProgress(done, total); }
  [[nodiscard]] QString SettleHint(int campaignId) const override {
    return QStringLiteral("\"marketingctl log --campaign %1\" lists them and says how they are settled.")
        .arg(campaignId);
  }

 private:
  Program& program_;
  RunLog* log_;
  bool stopOnError_;
  bool emailFailed_ = false;
  Mailshot* run_ = nullptr;
  bool paused_ = false;
};

/// Rows of the campaign after the run; not known when the database cannot be asked any more.
struct RowsLeft {
  bool known = true;
  int all = 0;
  int processed = 0;
  int left = 0;
  int inDoubt = 0;
};

/// \param condition  " AND ...", or empty
int CountRows(Statements& statements, const QString& condition, int campaignId) {
  Recordset rows;
  return statements.dbRunCommand(QStringLiteral("SELECT Count(1) FROM [Campaign Results] WHERE CampaignID = ") +
                                     QString::number(campaignId) + condition,
                                 true, CommandType::kText, rows);
}

int CountDoubt(Connection& connection, int campaignId) {
  int count = 0;
  for (const JournalEntry& entry : SendJournal(connection, {}).Read(campaignId))
    count += entry.InDoubt() ? 1 : 0;
  return count;
}

RowsLeft CountLeft(Application& app, int campaignId) {
  RowsLeft rows;
  const QString flagged = QStringLiteral(" AND (Send_SMS = 1 OR Send_Email = 1)");
  rows.all = CountRows(app.statements, {}, campaignId);
  rows.processed = CountRows(app.statements, flagged + QStringLiteral(" AND Processed = 1"), campaignId);
  rows.left = CountRows(app.statements, flagged + QStringLiteral(" AND Processed = 0"), campaignId);
  rows.known = rows.all >= 0 && rows.processed >= 0 && rows.left >= 0;
  try {
    if (rows.known) rows.inDoubt = CountDoubt(app.connection, campaignId);
  } catch (const DatabaseError& error) {
    Refuse(error.Description());
    rows.known = false;
  }
  return rows.known ? rows : RowsLeft{.known = false};
}

int ExitCodeOf(const MailshotSummary& summary, const RowsLeft& rows, const HeadlessUi& ui) {
  switch (summary.end) {
    case MailshotEnd::kRefused:
      // With no row flagged there is nothing to do, and only an information is shown.
      return ui.Warned() || ui.Declined() || ui.QuitRequested() ? kRefused : kDone;
    case MailshotEnd::kFailed:
      return kRefused;
    case MailshotEnd::kPaused:
      return kPaused;
    case MailshotEnd::kNothingLeft:
    case MailshotEnd::kFinished:
    case MailshotEnd::kOutOfCredits:
      break;
  }
  // This run's own doubtful rows count even when the database cannot be asked any more.
  const int inDoubt = std::max(summary.inDoubt, rows.inDoubt);
  const bool failed =
      summary.smsFailed + summary.emailFailed + inDoubt > 0 || summary.end == MailshotEnd::kOutOfCredits;
  if (failed) return kSomeFailed;
  return ui.QuitRequested() ? kRefused : kDone;
}

/// Why a run that was not refused had nothing to do; null when it had something.
const char* NothingToDo(const MailshotSummary& summary, const RowsLeft& rows, int code) {
  if (summary.end == MailshotEnd::kNothingLeft) return "all_processed";
  if (summary.end != MailshotEnd::kRefused || code != kDone) return nullptr;
  if (!rows.known) return nullptr;
  return rows.all == 0 ? "not_queried" : "not_flagged";
}

/// Prints the next step on the command line. The messages that windows share were printed before.
void SayWhatIsMissing(const RowsLeft& rows, int campaignId) {
  if (!rows.known || rows.processed + rows.left > 0) return;
  const QString hint = rows.all == 0
                           ? QStringLiteral("The campaign has no rows: \"query %1\" selects them.")
                           : QStringLiteral("No row is flagged: \"results %1 --send-by sms=0 email=0\" flags them.");
  PrintNote(hint.arg(campaignId));
}

/// Null when no text was due, because the credits were then not counted.
QJsonValue CreditsOf(const MailshotSummary& summary, int CreditNeed::*part) {
  return summary.credits ? QJsonValue(*summary.credits.*part) : QJsonValue();
}

QString RowsText(const RowsLeft& rows) {
  if (!rows.known) return QStringLiteral("Rows: not known, the database cannot be reached.");
  return QStringLiteral("Rows: %1 processed, %2 left, %3 in doubt.")
      .arg(rows.processed)
      .arg(rows.left)
      .arg(rows.inDoubt);
}

/// What `send` prints at its end.
struct SendReport {
  MailshotSummary summary;
  RowsLeft rows;
  bool dryRun;
  const char* nothing;
  int code;
};

void Print(Program& program, const SendReport& report) {
  const auto& [summary, rows, dryRun, nothing, code] = report;
  const auto counted = [&known = rows.known](int count) { return known ? QJsonValue(count) : QJsonValue(); };
  if (program.json) {
    QJsonObject object{{QStringLiteral("sms_sent"), summary.smsSent},
                       {QStringLiteral("sms_failed"), summary.smsFailed},
                       {QStringLiteral("email_sent"), summary.emailSent},
                       {QStringLiteral("email_failed"), summary.emailFailed},
                       {QStringLiteral("processed"), counted(rows.processed)},
                       {QStringLiteral("left"), counted(rows.left)},
                       {QStringLiteral("in_doubt"), counted(rows.inDoubt)},
                       {QStringLiteral("left_out"), summary.leftOut},
                       {QStringLiteral("delivered_before"), summary.deliveredBefore},
                       {QStringLiteral("credits_required"), CreditsOf(summary, &CreditNeed::toGo)},
                       {QStringLiteral("credits_in_all"), CreditsOf(summary, &CreditNeed::inAll)},
                       {QStringLiteral("dry_run"), dryRun},
                       {QStringLiteral("nothing"), nothing ? QJsonValue(QLatin1String(nothing)) : QJsonValue()},
                       {QStringLiteral("log"), QJsonArray::fromStringList(program.desk.resultsLog.Lines())}};
    if (code == kRefused) {
      NoteLostDatabase(program.app.connection);
      object.insert(QStringLiteral("error"), ErrorJson()[QStringLiteral("error")]);
    }
    PrintJson(object);
    return;
  }
  for (const QString& line : program.desk.resultsLog.Lines())
    PrintLine(line.simplified());
  PrintLine((dryRun ? QStringLiteral("Would send: %1 texts (%2 would fail), %3 e-mails (%4 would fail). ")
                    : QStringLiteral("Sent: %1 texts (%2 failed), %3 e-mails (%4 failed). "))
                .arg(summary.smsSent)
                .arg(summary.smsFailed)
                .arg(summary.emailSent)
                .arg(summary.emailFailed) +
            RowsText(rows) + (summary.leftOut > 0 ? QStringLiteral(" Left out: %1.").arg(summary.leftOut) : QString()));
}

int Send(Program& program, const SendArguments& arguments) {
  Application& app = program.app;
  if (arguments.emailOnly) {
    program.ui.SetAnswer(Question::kSmsCredits, MessageAnswer::kNo);
  } else if (arguments.yes || arguments.dryRun) {
    program.ui.SetAnswer(Question::kSmsCredits, MessageAnswer::kYes);
  }
  if (arguments.repeatDelivered) program.ui.SetAnswer(Question::kRepeatDelivered, MessageAnswer::kYes);
  if (arguments.allowUnknownFields) program.ui.SetAnswer(Question::kUnknownFields, MessageAnswer::kYes);
  if (arguments.keepGoing) program.ui.SetAnswer(Question::kGoOnSending, MessageAnswer::kYes);
  if (arguments.stopOnError) program.ui.SetAnswer(Question::kCancelQueuedEmails, MessageAnswer::kYes);
  const std::optional<int> id = FindCampaign(program, arguments.id);
  if (!id || !app.campaignStorage.LoadCampaign(*id)) return kRefused;

  const CampaignRecord& record = app.campaign.record;
  const QString over = RemindersOverText(app.statements, record.ID, app.clock.Today());
  if (!over.isEmpty()) PrintNote(over);
  RunLog log(program.desk.resultsLog, ResultsLogFile(app.log.Path(), record.ID));
  Watch watch(program, arguments.dryRun ? nullptr : &log, arguments.stopOnError);
  Mailshot run = program.desk.MakeMailshot(watch);
  watch.SetRun(&run);
  const MailshotSummary summary = run.Send(record.ID, {record.SMS, record.Email_Subject, record.Email_Body},
                                           arguments.dryRun ? MailshotMode::kDryRun : MailshotMode::kSend);
  const RowsLeft rows = CountLeft(app, record.ID);
  program.ui.EndProgress();
  int code = ExitCodeOf(summary, rows, program.ui);
  const char* nothing = NothingToDo(summary, rows, code);
  if (nothing) SayWhatIsMissing(rows, record.ID);
  if (nothing && arguments.nothingIsAnError)
    code = Refuse(Reason::kNothingToSend,
                  QStringLiteral("Nothing was sent, which is an error here (--nothing-is-an-error)."));
  // A person sees no summary of a run that did not take place. A script always gets the same keys.
  const bool refused = code == kRefused && summary.end != MailshotEnd::kFailed;
  if (program.json || !refused) Print(program, {summary, rows, arguments.dryRun, nothing, code});
  return code;
}

}  // namespace

void AddSendCommand(Runner& runner) {
  auto arguments = std::make_shared<SendArguments>();
  CLI::App& command =
      *runner.Root().add_subcommand("send", "Send the texts and e-mails of a campaign; goes on where a run stopped");
  DeclareCampaign(command, arguments->id)->required();
  command.add_flag("--dry-run", arguments->dryRun, "Do everything but send and record, and print what would go");
  CLI::Option* yes =
      command.add_flag("--yes", arguments->yes, "Agree to spend SMS credits (without it texts are refused)");
  command.add_flag("--email-only", arguments->emailOnly, "Send the e-mails only; rows with a text stay unprocessed")
      ->excludes(yes);
  command.add_flag("--stop-on-error", arguments->stopOnError, "Stop after the first e-mail that fails");
  command.add_flag("--repeat-delivered", arguments->repeatDelivered,
                   "Where one half of a row failed, send the half that was delivered again, too");
  command.add_flag("--keep-going", arguments->keepGoing,
                   "Go on with a channel whose server failed three times in a row (without it that channel pauses)");
  command.add_flag("--allow-unknown-fields", arguments->allowUnknownFields,
                   "Send although a text or an e-mail holds what looks like a merge field and is none");
  command.add_flag("--nothing-is-an-error", arguments->nothingIsAnError,
                   "End with 1 when nothing is flagged, or everything was processed (without it: 0)");
  command.footer(
      "Example: marketingctl --folder garage --user Pat send 12 --yes\nCtrl+C pauses after the current row; the next send goes on. Exit codes: 3 some rows failed or are in doubt, 4 paused.");
  runner.AddCommand(command, [arguments](Program& program) { return Send(program, *arguments); });
}

}  // namespace qbx::ctl
