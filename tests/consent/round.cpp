// Steps 1 to 4 of a round: the two users, the query, the flags.

#include "consent/round.h"

#include "consent/host_statement.h"
#include "consent/round_course.h"

namespace qbx::consent {
namespace {

MailshotTemplates MakeTemplates(RandomSource& random) {
  static const QStringList kPieces = {
      QStringLiteral("Dear {contact}, "),
      QStringLiteral("your {MAKE} {model} is due {duedate}. "),
      QStringLiteral("{title}{Firstname}! "),
      QStringLiteral("Today is {currentdate}. "),
      QStringLiteral("Für nur £99 {duetime}. "),
      QStringLiteral("{ not a field } {contact "),
      QStringLiteral("Line\nline\r\nline\r"),
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

}  // namespace

void Round::StartUser() {
  seen_ = world_.settings;
  RefuseOptedOut();
  last_.reset();
  user_ = std::make_unique<DeskUser>(around_, story_, QStringLiteral("PAT"), QLatin1String(kComputer));
}

/// The program refuses "Include Opted Out" while only customers who opted in get messages.
void Round::RefuseOptedOut() {
  if (seen_.onlyOptedIn) plan_.filters.chkIncludeOptedOut = false;
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

/// Checks what the desk says about customers who were left out.
bool Round::CompareLosses(bool startCounted, bool filtered) {
  const LeftOut& told = user_->desk->state.leftOut;
  if (!told.after || !told.before) {
    story_.Fault(QStringLiteral("nobody counted who was left out"));
    return false;
  }
  Losses said{.candidates = told.after->candidates, .filters = {}, .withoutConsent = told.after->withoutConsent};
  for (const LeftOutAfter::Filter& filter : told.after->filters)
    said.filters[filter.filter] = filter.rows;
  Losses expected = CountLosses(world_, plan_, filtered, seen_);
  const Losses start = CountLosses(world_, plan_, false, seen_);
  expected.optedOut = expected.noMarketing = 0;
  const bool startRight = told.before->found == start.candidates && told.before->optedOut == start.optedOut &&
                          told.before->noMarketing == start.noMarketing;
  if (said == expected && (startRight || !startCounted)) return true;
  story_.Fault(QStringLiteral("who was left out: ") + LeftOutTexts(told, false).join(u' '));
  return false;
}

bool Round::SelectRows() {
  plan_ = MakeQueryPlan(random_, world_);
  story_.Tell(QStringLiteral("%1 customers, only opted in %2, platform %3; query: ")
                  .arg(world_.customers.size())
                  .arg(world_.settings.onlyOptedIn)
                  .arg(world_.settings.usingPlatform) +
              Describe(plan_));
  RefuseOptedOut();
  Between(20);
  const auto refused = [this] {
    story_.Fault(QStringLiteral("the step was refused: ") + user_->ui.lastMessage);
    return false;
  };
  if (random_.Chance(10)) DieInQuery();
  if (!user_->StepOne(plan_)) return refused();
  if (!Compare(false, QStringLiteral("step 1")) || !CompareLosses(true, false)) return false;
  Between(20);
  if (plan_.refreshFirst) {
    if (!user_->RefreshStepTwo(plan_)) return refused();
    if (!Compare(true, QStringLiteral("refresh")) || !CompareLosses(true, true)) return false;
  }
  if (!user_->StepTwo(plan_)) return refused();
  if (!Compare(true, QStringLiteral("step 2")) || !CompareLosses(false, true)) return false;
  counts_.rows += static_cast<qint64>(ledger_.rows.size());
  return !ledger_.rows.empty();
}

/// Lets the process end at one of its calls to the database.
/// \return whether the process ended
bool Round::Dies(int calls, const std::function<void()>& step) {
  user_->fuse.left = random_.Between(1, calls);
  try {
    step();
  } catch (const ProcessEnds&) {
    story_.Tell(QStringLiteral("  DIES"));
    ++counts_.deaths;
    return true;
  }
  user_->fuse.PutOut();
  return false;
}

/// Checks that the rows are either from before the step or from after it.
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

/// Each channel is either done or not begun.
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
  letters_.letter = MakeTemplates(random_).emailBody;
  saved_ = random_.Chance(80);
  if (saved_ && !user_->Save(QStringLiteral("Round"), ledger_.templates))
    story_.Fault(QStringLiteral("the campaign was not saved"));
  campaign_ = user_->Campaign();
  for (int times = random_.Between(1, 2); times > 0; --times) {
    const SendMethods methods = MakeSendMethods(random_);
    story_.Tell(QStringLiteral("send methods ") + Describe(methods));
    last_.reset();
    if (random_.Chance(15)) DieInMethods(methods);
    if (!user_->desk->edits.ApplySendMethods(methods)) story_.Fault(QStringLiteral("the send methods were refused"));
    ApplyMethods(ledger_.rows, methods, seen_);
  }
  for (int clicks = random_.Between(0, 4); clicks > 0; --clicks)
    Click(saved_ && random_.Chance(30) ? Other() : *user_);
  for (int changes = random_.Between(0, 3); changes > 0; --changes)
    ChangeMany();
  CompareFlags(ReadRows(host_.Database(), campaign_), ledger_, story_);
  Between(30);
  return !story_.Failed();
}

/// A claim becomes void. SQL Server has a clock of its own, which cannot be set.
void Round::LongSilence() {
  around_.clock.AdvanceSeconds(kLongSilence);
  if (test::ServerUnderTest::IsSqlServer())
    (HostStatement(host_.Database(), "UPDATE Campaign_Claims SET LastSeen = DATEADD(second, -?, LastSeen)")
     << Number(kLongSilence))
        .Run();
}

/// A flag set by hand.
void Round::Click(DeskUser& user) {
  Row& row = ledger_.rows[static_cast<size_t>(random_.Between(0, static_cast<int>(ledger_.rows.size()) - 1))];
  if (row.gone) return;
  // Another computer cannot see that the process of a claim has died: it waits.
  LongSilence();
  const bool text = random_.Chance(50);
  story_.Tell(user.User() + QStringLiteral(" clicks ") +
              (text ? QStringLiteral("text of ") : QStringLiteral("e-mail of ")) + row.Name());
  user.desk->results.DisplayResults(campaign_);
  const auto click = [&] {
    user.desk->edits.ClickCell(text ? QStringLiteral("Send_SMS") : QStringLiteral("Send_Email"), row.record);
    bool& wanted = (text ? row.sms : row.mail).wanted;
    wanted = !wanted;
  };
  if (&user == user_.get())
    Changes({row.record}, click);
  else
    click();
}

RoundCounts PlayRound(const RoundWishes& wishes, int number, Story& story) {
  return Round(wishes, number, story).Play();
}

}  // namespace qbx::consent
