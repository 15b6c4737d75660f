#include "consent/round.h"

#include "consent/desk_user.h"
#include "consent/garage_folder.h"
#include "consent/host_program.h"
#include "consent/make_world.h"
#include "consent/stored_rows.h"
#include "consent/watch.h"
#include "consent/weather.h"
#include "dispatch/settle_doubt.h"

namespace qbx::consent {
namespace {

constexpr char kOtherComputer[] = "OFFICE-PC";
constexpr char kComputer[] = "WORKSHOP-PC";

/// After which a claim of another computer is void.
constexpr qint64 kLongSilence = qint64{CampaignClaim::kSilence + 1} * 60;

MailshotTemplates MakeTemplates(RandomSource& random) {
  static const QStringList kPieces = {
      QStringLiteral("Dear {contact}, "),
      QStringLiteral("your {MAKE} {model} is due {duedate}. "),
      QStringLiteral("{title}{Firstname}! "),
      QStringLiteral("Today is {currentdate}. "),
      QStringLiteral("Für nur £99 {duetime}. "),
      QStringLiteral("{ not a field } {contact "),
      QStringLiteral("A long text that nobody reads to its end, for it is the same in all of them. ").repeated(12)};
  const auto text = [&](int pieces) {
    QString merged = QStringLiteral("{lastname}/{regno}: ");
    for (; pieces > 0; --pieces)
      merged += random.Pick(kPieces);
    return merged;
  };
  return {.sms = text(random.Between(1, 3)),
          .emailSubject = text(1).left(60),
          .emailBody = text(random.Between(1, 4)) + QStringLiteral("\r\nBye")};
}

class Round {
 public:
  Round(const RoundWishes& wishes, int number, Story& story)
      : story_(story),
        seed_(RoundSeed(wishes.seed, number)),
        random_(seed_, 100),
        world_(MakeGarage(wishes)),
        ledger_(world_, story, around_.clock),
        gateway_(ledger_, seed_),
        mail_(ledger_, seed_),
        host_(world_, ledger_, story, folder_.DatabaseFile(), seed_) {
    around_.folder = folder_.Path();
    around_.gateway = &gateway_;
    around_.mail = &mail_;
    StoreWorld(world_, {}, host_.Database());
  }

  RoundCounts Play() {
    StartUser();
    if (SelectRows() && PrepareRows()) {
      for (int runs = random_.Between(1, 3); runs > 0 && !story_.Failed(); --runs) {
        DisturbedRun();
        BetweenRuns();
      }
      LastRuns();
    }
    counts_.arrived = ledger_.Arrived();
    return counts_;
  }

 private:
  World MakeGarage(const RoundWishes& wishes) {
    RandomSource random(seed_, 1);
    return MakeWorld(random, wishes.customers > 0 ? wishes.customers : random.Between(3, 70));
  }

  // The two users.
  void StartUser();
  DeskUser& Other();
  void Restart();

  // Steps 1 to 4.
  bool SelectRows();
  bool PrepareRows();
  void Click(DeskUser& user);
  void Between(int percent);
  bool Compare(bool filtered, const QString& step);
  bool Dies(int calls, const std::function<void()>& step);
  void DieInQuery();
  void DieInMethods(const SendMethods& methods);

  // Sending.
  void DisturbedRun();
  void BetweenRuns();
  void SelectAgain();
  void LastRuns();
  void SettleDoubts();
  void SettleOne(const StoredRow& stored, bool arrived);
  void Reopen(Row& row);
  MailshotSummary Run(DeskUser& user, const std::vector<Watch::Disturbance>& disturbances);
  [[nodiscard]] std::vector<Watch::Disturbance> MakeDisturbances();
  [[nodiscard]] std::function<void()> MakeAction(MailshotPoint point);
  void OtherSends();
  void OtherTakesOver(bool onItsWay);

  Story& story_;
  quint64 seed_;
  RandomSource random_;
  GarageFolder folder_;
  Surroundings around_;
  World world_;
  Ledger ledger_;
  FakeGateway gateway_;
  FakeMail mail_;
  HostProgram host_;
  Settings seen_;  ///< the options as the first user's program knows them
  QueryPlan plan_;
  std::unique_ptr<DeskUser> user_;
  std::unique_ptr<DeskUser> other_;
  Watch* watch_ = nullptr;
  Mailshot* run_ = nullptr;
  bool takenOver_ = false;  ///< the present run lost its claim to another computer
  QDate today_;             ///< when the present run began
  int campaign_ = 0;
  bool saved_ = false;
  bool restarted_ = false;  ///< what step 2 showed is not there any more
  RoundCounts counts_;
};

void Round::StartUser() {
  seen_ = world_.settings;
  user_ = std::make_unique<DeskUser>(around_, story_, QStringLiteral("PAT"), QLatin1String(kComputer));
}

DeskUser& Round::Other() {
  const QString computer = QLatin1String(random_.Chance(50) ? kComputer : kOtherComputer);
  if (!other_) {
    story_.Tell(QStringLiteral("  JO starts on ") + computer);
    other_ = std::make_unique<DeskUser>(around_, story_, QStringLiteral("JO"), computer);
    if (saved_ && !other_->Load(campaign_)) story_.Fault(QStringLiteral("the campaign could not be loaded"));
  }
  return *other_;
}

void Round::Restart() {
  story_.Tell(QStringLiteral("PAT starts again"));
  restarted_ = true;
  StartUser();
  if (saved_) {
    if (!user_->Load(campaign_)) story_.Fault(QStringLiteral("the campaign could not be loaded"));
    return;
  }
  user_->app.campaign.record.ID = campaign_;
  user_->desk->results.DisplayResults(campaign_);
}

/// Something may happen between two steps.
void Round::Between(int percent) {
  while (random_.Chance(percent))
    host_.Withdraw();
}

bool Round::Compare(bool filtered, const QString& step) {
  const std::vector<Picked> picked = Select(world_, plan_, filtered, seen_);
  ledger_.Take(CompareSelection(ReadRows(host_.Database(), user_->Campaign()), picked, step, story_));
  story_.Tell(step + QStringLiteral(": %1 rows").arg(ledger_.rows.size()));
  return !story_.Failed();
}

bool Round::SelectRows() {
  plan_ = MakeQueryPlan(random_, world_);
  story_.Tell(QStringLiteral("%1 customers, only opted in %2, platform %3; query: ")
                  .arg(world_.customers.size())
                  .arg(world_.settings.onlyOptedIn)
                  .arg(world_.settings.usingPlatform) +
              Describe(plan_));
  if (seen_.onlyOptedIn) plan_.filters.chkIncludeOptedOut = false;  // the program refuses it
  Between(20);
  const auto refused = [this] {
    story_.Fault(QStringLiteral("the step was refused: ") + user_->ui.lastMessage);
    return false;
  };
  if (random_.Chance(10)) DieInQuery();
  if (!user_->StepOne(plan_)) return refused();
  if (!Compare(false, QStringLiteral("step 1"))) return false;
  Between(20);
  if (plan_.refreshFirst) {
    if (!user_->RefreshStepTwo(plan_)) return refused();
    if (!Compare(true, QStringLiteral("refresh"))) return false;
  }
  if (!user_->StepTwo(plan_)) return refused();
  if (!Compare(true, QStringLiteral("step 2"))) return false;
  counts_.rows += static_cast<qint64>(ledger_.rows.size());
  return !ledger_.rows.empty();
}

/// Lets the process end at one of its calls to the database.
/// \return whether it came to that
bool Round::Dies(int calls, const std::function<void()>& step) {
  user_->fuse.left = random_.Between(1, calls);
  try {
    step();
  } catch (const ProcessEnds&) {
    story_.Tell(QStringLiteral("  DIES"));
    ++counts_.deaths;
    return true;
  }
  user_->fuse.left = 0;
  return false;
}

/// The rows are those of one step or of the other, never something in between.
void Round::DieInQuery() {
  const bool died = Dies(60, [this] {
    if (user_->StepOne(plan_)) (void)user_->StepTwo(plan_);
  });
  if (!died) return;
  const std::vector<StoredRow> stored = ReadRows(host_.Database(), user_->Campaign());
  const bool whole = stored.empty() || SameRows(stored, Select(world_, plan_, false, seen_)) ||
                     SameRows(stored, Select(world_, plan_, true, seen_));
  if (!whole) story_.Fault(QStringLiteral("a query that was cut off left half of its work"));
  StartUser();
}

/// Each channel is done or not.
void Round::DieInMethods(const SendMethods& methods) {
  if (!Dies(14, [&] { (void)user_->desk->edits.ApplySendMethods(methods); })) {
    return ApplyMethods(ledger_.rows, methods, seen_);
  }
  const std::vector<StoredRow> stored = ReadRows(host_.Database(), campaign_);
  const SendMethods steps[] = {{}, {.sms = methods.sms}, {.sms = methods.sms, .email = methods.email}, methods};
  bool whole = false;
  for (const SendMethods& step : steps) {
    std::vector<Row> rows = ledger_.rows;
    ApplyMethods(rows, step, seen_);
    if (whole || !SameFlags(stored, rows)) continue;
    whole = true;
    ledger_.Take(rows);
  }
  if (!whole) story_.Fault(QStringLiteral("send methods that were cut off left half of a channel"));
  Restart();
}

bool Round::PrepareRows() {
  Between(25);
  ledger_.templates = MakeTemplates(random_);
  saved_ = random_.Chance(80);
  if (saved_ && !user_->Save(QStringLiteral("Round"), ledger_.templates))
    story_.Fault(QStringLiteral("the campaign was not saved"));
  campaign_ = user_->Campaign();
  for (int times = random_.Between(1, 2); times > 0; --times) {
    const SendMethods methods = MakeSendMethods(random_);
    story_.Tell(QStringLiteral("send methods ") + Describe(methods));
    if (random_.Chance(15)) DieInMethods(methods);
    if (!user_->desk->edits.ApplySendMethods(methods)) story_.Fault(QStringLiteral("the send methods were refused"));
    ApplyMethods(ledger_.rows, methods, seen_);
  }
  for (int clicks = random_.Between(0, 4); clicks > 0; --clicks)
    Click(saved_ && random_.Chance(30) ? Other() : *user_);
  CompareFlags(ReadRows(host_.Database(), campaign_), ledger_, story_);
  Between(30);
  return !story_.Failed();
}

/// A flag set by hand.
void Round::Click(DeskUser& user) {
  Row& row = ledger_.rows[static_cast<size_t>(random_.Between(0, static_cast<int>(ledger_.rows.size()) - 1))];
  if (row.gone) return;
  // Another computer cannot see that the process of a claim has died: it waits.
  around_.clock.AdvanceSeconds(kLongSilence);
  const bool text = random_.Chance(50);
  story_.Tell(user.User() + QStringLiteral(" clicks ") +
              (text ? QStringLiteral("text of ") : QStringLiteral("e-mail of ")) + row.Name());
  user.desk->results.DisplayResults(campaign_);
  user.desk->edits.ClickCell(text ? QStringLiteral("Send_SMS") : QStringLiteral("Send_Email"), row.record);
  bool& wanted = (text ? row.sms : row.mail).wanted;
  wanted = !wanted;
}

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
  if (die < 72 && saved_) return [this] { OtherSends(); };
  if (die < 77 && saved_) return [this, onItsWay] { OtherTakesOver(onItsWay); };
  if (die < 85)
    return [this] {
      if (around_.clock.Today() != today_) return;  // once a run is enough
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
    user_->fuse.fails = random_.Chance(50);
  }
  const qint64 deaths = counts_.deaths;
  (void)Run(*user_, MakeDisturbances());
  user_->fuse.left = 0;
  user_->fuse.fails = false;
  if (counts_.deaths > deaths) Restart();
}

/// Somebody else wants to send the campaign that is being sent.
void Round::OtherSends() {
  if (takenOver_ || around_.clock.Today() != today_) return;  // after such a silence a claim is void
  DeskUser& other = Other();
  story_.Tell(QStringLiteral("  JO wants to send too"));
  MailshotObserver nobody;
  if (other.desk->MakeMailshot(nobody).Send(campaign_, ledger_.templates).end != MailshotEnd::kRefused)
    story_.Fault(QStringLiteral("two runs of one campaign at the same time"));
}

/// The computer was silent for so long that another one goes on in its place.
void Round::OtherTakesOver(bool onItsWay) {
  if (other_ && other_->app.host.ComputerName() == QLatin1String(kComputer)) return;
  story_.Tell(QStringLiteral("  silence; JO takes over"));
  takenOver_ = true;
  if (!other_) {
    other_ = std::make_unique<DeskUser>(around_, story_, QStringLiteral("JO"), QLatin1String(kOtherComputer));
    if (!other_->Load(campaign_)) story_.Fault(QStringLiteral("the campaign could not be loaded"));
  }
  around_.clock.AdvanceSeconds(kLongSilence);
  if (onItsWay) ledger_.MayBeInDoubt(watch_->Record());
  Watch* const outer = watch_;
  Mailshot* const outerRun = run_;
  (void)Run(*other_, {});
  watch_ = outer;
  run_ = outerRun;
}

void Round::BetweenRuns() {
  if (story_.Failed()) return;
  Between(30);
  if (random_.Chance(15)) host_.ChangeRow();
  if (ledger_.rows.empty()) return;
  if (random_.Chance(20)) Click(saved_ && random_.Chance(30) ? Other() : *user_);
  if (random_.Chance(30)) SettleDoubts();
  if (random_.Chance(6)) SelectAgain();
  if (random_.Chance(8) && !ledger_.rows.empty()) {
    Row& row = ledger_.rows[static_cast<size_t>(random_.Between(0, static_cast<int>(ledger_.rows.size()) - 1))];
    if (row.processed && !row.gone) Reopen(row);
  }
}

/// The user selects anew although some were written to: they are written to again, as he agreed.
void Round::SelectAgain() {
  if (restarted_) return;
  story_.Tell(QStringLiteral("PAT selects again"));
  if (!user_->StepTwo(plan_)) return story_.Fault(QStringLiteral("the step was refused: ") + user_->ui.lastMessage);
  if (!Compare(true, QStringLiteral("step 2 again")) || ledger_.rows.empty()) return;
  const SendMethods methods{.sms = 0, .email = 0};
  if (!user_->desk->edits.ApplySendMethods(methods)) story_.Fault(QStringLiteral("the send methods were refused"));
  ApplyMethods(ledger_.rows, methods, seen_);
  CompareFlags(ReadRows(host_.Database(), campaign_), ledger_, story_);
}

/// "Processed" is unticked by hand: the row is due whole again.
void Round::Reopen(Row& row) {
  story_.Tell(QStringLiteral("PAT unticks ") + row.Name());
  user_->desk->results.DisplayResults(campaign_);
  user_->desk->edits.ClickCell(QStringLiteral("Processed"), row.record);
  row.processed = false;
  for (Half* half : {&row.sms, &row.mail})
    *half = Half{.wanted = half->wanted};
}

/// A person finds out what became of the messages in doubt, and says so.
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
    user_->desk->edits.ClickCell(QStringLiteral("Processed"), row.record);
    row.processed = true;
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

/// All is well again: what is left goes out, and one run more has nothing to do.
void Round::LastRuns() {
  gateway_.weather.Set(0);
  mail_.weather.Set(0);
  gateway_.credits = 1000000;
  for (int last : {0, 1}) {
    if (story_.Failed()) return;
    story_.Tell(last == 0 ? QStringLiteral("PAT sends; all is well") : QStringLiteral("PAT sends again"));
    user_->ui.answers = {};
    (void)Run(*user_, {});
  }
}

}  // namespace

RoundCounts PlayRound(const RoundWishes& wishes, int number, Story& story) {
  return Round(wishes, number, story).Play();
}

}  // namespace qbx::consent
