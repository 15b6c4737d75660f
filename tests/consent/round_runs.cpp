// The runs of a round, their disturbances, and the users' work between them.

#include "consent/round_course.h"
#include "dispatch/settle_doubt.h"

namespace qbx::consent {

MailshotSummary Round::Run(DeskUser& user, const std::vector<Watch::Disturbance>& disturbances) {
  ++counts_.runs;
  ledger_.RunBegins();
  user.ui.channelPaused = false;
  user.ui.onRepeatQuestion = [this](int customers, bool yes) { ledger_.AskedToRepeat(customers, yes); };
  const qsizetype logged = user.desk->resultsLog.Lines().size();
  Watch watch(ledger_, disturbances);
  watch_ = &watch;
  MailshotSummary summary;
  RunReport report;
  Mailshot run = user.desk->MakeMailshot(watch);
  run_ = &run;
  try {
    summary = run.Send(campaign_, ledger_.templates);
    report.finished = summary.end == MailshotEnd::kFinished && !user.ui.channelPaused;
    if (summary.end == MailshotEnd::kFailed && watch.OnItsWay()) ledger_.MayBeInDoubt(watch.Record());
  } catch (const ProcessEnds&) {
    report.died = true;
    ++counts_.deaths;
    if (watch.OnItsWay()) ledger_.MayBeInDoubt(watch.Record());
  }
  report.textsSkipped = user.ui.answers.credits == MessageAnswer::kNo;
  report.log = user.desk->resultsLog.Lines().mid(logged);
  for (const QString& line : report.log)
    story_.Tell(QStringLiteral("    log: ") + line.section(QStringLiteral(" - "), 1).simplified());
  story_.Tell(report.died ? QStringLiteral("  DIES")
                          : QStringLiteral("  ends with %1").arg(static_cast<int>(summary.end)));
  ledger_.RunEnds(report, ReadRows(host_.Database(), campaign_));
  return summary;
}

std::function<void()> Round::MakeAction(MailshotPoint point) {
  const bool onItsWay = point == MailshotPoint::kAfterJournal || point == MailshotPoint::kAfterSend;
  const int die = random_.Between(0, 99);
  if (die < 50) return [this] { host_.Withdraw(); };
  if (die < 62) return [this] { host_.ChangeRow(); };
  if (die < 72 && saved_) return [this] { OtherMeddles(); };
  if (die < 77 && saved_) return [this, onItsWay] { OtherTakesOver(onItsWay); };
  if (die < 85)
    return [this] {
      if (around_.clock.Today() != today_) return;  // only once in a run
      story_.Tell(QStringLiteral("  the next day begins"));
      around_.clock.AdvanceDays(1);
    };
  if (die < 92)
    return [this] {
      story_.Tell(QStringLiteral("  pause"));
      run_->Pause();
    };
  return [this] { host_.Withdraw(); };
}

std::vector<Watch::Disturbance> Round::MakeDisturbances() {
  static constexpr MailshotPoint kQuiet[] = {MailshotPoint::kRowStarted, MailshotPoint::kBeforeJournal,
                                             MailshotPoint::kAfterJournal, MailshotPoint::kAfterSend,
                                             MailshotPoint::kRowFinished};
  const int rows = std::max(1, static_cast<int>(ledger_.rows.size()));
  std::vector<Watch::Disturbance> disturbances;
  for (int n = random_.Between(0, 4); n > 0; --n) {
    const MailshotPoint point = random_.Pick(kQuiet);
    disturbances.push_back({point, 1 + random_.Between(0, rows) / 2, MakeAction(point)});
  }
  if (random_.Chance(60)) {
    const auto point = static_cast<MailshotPoint>(random_.Between(0, static_cast<int>(MailshotPoint::kRowFinished)));
    disturbances.push_back({point, 1 + random_.Between(0, rows) / 2, [this] {
                              user_->Die();
                              throw ProcessEnds{};
                            }});
  }
  return disturbances;
}

void Round::DisturbedRun() {
  story_.Tell(QStringLiteral("PAT sends"));
  today_ = around_.clock.Today();
  takenOver_ = false;
  const int trouble = random_.Chance(50) ? 0 : random_.Pick(std::array{3, 10, 30});
  gateway_.weather.Set(trouble);
  mail_.weather.Set(trouble);
  gateway_.credits = random_.Chance(6) ? random_.Between(0, 10) : 100000;
  const int credits = random_.Between(0, 99);
  user_->ui.answers = {.credits = credits < 85   ? MessageAnswer::kYes
                                  : credits < 95 ? MessageAnswer::kNo
                                                 : MessageAnswer::kCancel,
                       .repeatDelivered = random_.Chance(25),
                       .goOnSending = random_.Chance(50),
                       .cancelQueued = random_.Chance(10)};
  if (random_.Chance(30)) {
    user_->app.optionsLoader.LoadOptions();
    seen_ = world_.settings;
  }
  if (random_.Chance(25)) {
    user_->fuse.left = random_.Between(1, 15 * (1 + static_cast<int>(ledger_.rows.size())));
    if (random_.Chance(60)) user_->fuse.burns = random_.Chance(50) ? Burns::kDiskFull : Burns::kDeadlock;
  }
  const qint64 deaths = counts_.deaths;
  (void)Run(*user_, MakeDisturbances());
  user_->fuse.PutOut();
  if (counts_.deaths > deaths) Restart();
}

/// Another user tries to send, change or delete the campaign that is being sent. The program refuses all of it.
void Round::OtherMeddles() {
  if (takenOver_ || around_.clock.Today() != today_) return;  // after so long, a claim is void
  DeskUser& other = Other();
  story_.Tell(QStringLiteral("  JO meddles"));
  MailshotObserver nobody;
  bool done = false;
  switch (random_.Between(0, 4)) {
    case 0:
      done = other.app.campaignStorage.DeleteCampaign(campaign_);
      break;
    case 1:
      done = other.desk->steps.NextStep(1).Moved();
      break;
    case 2:
      done = other.desk->edits.ApplySendMethods({.sms = 1, .email = 1});
      break;
    case 3:
      other.desk->edits.ClickCell(QStringLiteral("Send_SMS"), random_.Pick(ledger_.rows).record);
      break;  // the end of the run checks that no flag has changed
    default:
      done = other.desk->MakeMailshot(nobody).Send(campaign_, ledger_.templates).end != MailshotEnd::kRefused;
      break;
  }
  if (done) story_.Fault(QStringLiteral("a campaign that is being sent was changed, or sent by another one"));
}

/// The computer was silent for so long that another one takes the run over.
void Round::OtherTakesOver(bool onItsWay) {
  if (other_ && other_->app.host.ComputerName() == QLatin1String(kComputer)) return;
  story_.Tell(QStringLiteral("  silence; JO takes over"));
  takenOver_ = true;
  if (!other_) {
    other_ = std::make_unique<DeskUser>(around_, story_, QStringLiteral("JO"), QLatin1String(kOtherComputer));
    if (!other_->Load(campaign_)) story_.Fault(QStringLiteral("the campaign could not be loaded"));
  }
  LongSilence();
  if (onItsWay) ledger_.MayBeInDoubt(watch_->Record());
  if (random_.Chance(50)) {  // what JO sends may be in doubt
    gateway_.weather.Set(60);
    mail_.weather.Set(60);
  }
  Watch* const outer = watch_;
  Mailshot* const outerRun = run_;
  (void)Run(*other_, {});
  watch_ = outer;
  run_ = outerRun;
  if (random_.Chance(60)) {
    user_->fuse.procedure = QStringLiteral("proc_updp_Send_Journal");
    user_->fuse.burns = Burns::kDeadlock;
  }
}

void Round::BetweenRuns() {
  if (story_.Failed()) return;
  Between(30);
  if (random_.Chance(15)) host_.ChangeRow();
  if (ledger_.rows.empty()) return;
  if (random_.Chance(20)) Click(saved_ && random_.Chance(30) ? Other() : *user_);
  if (random_.Chance(30)) SettleDoubts();
  if (random_.Chance(40)) ChangeMany();
  if (random_.Chance(6)) SelectAgain();
  if (random_.Chance(8) && !ledger_.rows.empty()) {
    Row& row = ledger_.rows[static_cast<size_t>(random_.Between(0, static_cast<int>(ledger_.rows.size()) - 1))];
    if (row.processed && !row.gone) Reopen(row);
  }
}

/// The user runs the query again although some customers got messages. They get them again, because the user agreed.
void Round::SelectAgain() {
  if (restarted_) return;
  story_.Tell(QStringLiteral("PAT selects again"));
  if (!user_->StepTwo(plan_)) return story_.Fault(QStringLiteral("the step was refused: ") + user_->ui.lastMessage);
  if (!Compare(true, QStringLiteral("step 2 again")) || ledger_.rows.empty()) return;
  last_.reset();
  const SendMethods methods{.sms = 0, .email = 0};
  if (!user_->desk->edits.ApplySendMethods(methods)) story_.Fault(QStringLiteral("the send methods were refused"));
  ApplyMethods(ledger_.rows, methods, seen_);
  CompareFlags(ReadRows(host_.Database(), campaign_), ledger_, story_);
}

/// Unticks "Processed" by hand, so that all messages of the row are due again.
void Round::Reopen(Row& row) {
  story_.Tell(QStringLiteral("PAT unticks ") + row.Name());
  user_->desk->results.DisplayResults(campaign_);
  Changes({row.record}, [&] {
    user_->desk->edits.ClickCell(QStringLiteral("Processed"), row.record);
    row.processed = false;
    for (Half* half : {&row.sms, &row.mail})
      *half = Half{.wanted = half->wanted};
    row.post = {};
  });
}

/// A person decides about the messages in doubt.
void Round::SettleDoubts() {
  const bool byTicking = random_.Chance(50);
  for (const StoredRow& stored : ReadRows(host_.Database(), campaign_)) {
    if (!stored.journal.InDoubt() || stored.processed) continue;
    Row& row = *ledger_.Find(stored.record);
    const bool arrived = (stored.journal.sms == JournalState::kSending && row.sms.arrived > 0) ||
                         (stored.journal.email == JournalState::kSending && row.mail.arrived > 0);
    story_.Tell(QStringLiteral("PAT settles ") + row.Name() +
                (arrived ? QStringLiteral(": it arrived") : QStringLiteral(": it did not")));
    if (!byTicking) {
      SettleOne(stored, arrived);
      continue;
    }
    user_->desk->results.DisplayResults(campaign_);
    Changes({row.record}, [&] {
      user_->desk->edits.ClickCell(QStringLiteral("Processed"), row.record);
      row.processed = true;
    });
    if (!arrived) Reopen(row);
  }
}

void Round::SettleOne(const StoredRow& stored, bool arrived) {
  const DoubtOutcome outcome = arrived ? DoubtOutcome::kSent : DoubtOutcome::kNotSent;
  const DoubtSettlement settlement =
      SettleDoubt(user_->app.connection, user_->desk->guard, user_->User(), campaign_, {stored.record}, outcome);
  if (settlement.refusal) return story_.Fault(QStringLiteral("the doubt could not be settled"));
  for (const StoredRow& now : ReadRows(host_.Database(), campaign_))
    if (now.record == stored.record) ledger_.Settled(stored, now, arrived);
}

/// Without trouble, checks that a run sends the remaining messages and that the next run has nothing to do.
void Round::LastRuns() {
  gateway_.weather.Set(0);
  mail_.weather.Set(0);
  gateway_.credits = 1000000;
  for (int last : {0, 1}) {
    if (story_.Failed()) return;
    story_.Tell(last == 0 ? QStringLiteral("PAT sends; all is well") : QStringLiteral("PAT sends again"));
    user_->ui.answers = {};
    (void)Run(*user_, {});
    if (!story_.Failed()) MakeLetters(false);
  }
}

}  // namespace qbx::consent
