// The letters of a round: making, viewing, printing and saving them, and disturbances.

#include <exception>

#include "consent/round_course.h"
#include "letters/letter_rows.h"

namespace qbx::consent {
namespace {

/// Watches while letters are made.
class LetterWatch final : public LetterObserver {
 public:
  explicit LetterWatch(std::function<void(int)> progress, std::function<void()> ends = {})
      : progress_(std::move(progress)), ends_(std::move(ends)) {}
  void Begins(int) override {}
  void Progress(int done) override { progress_(done); }
  void Ends() override {
    if (ends_ && std::uncaught_exceptions() == 0) ends_();
  }
  bool Cancelled() override { return cancelled; }

  bool cancelled = false;

 private:
  std::function<void(int)> progress_;
  std::function<void()> ends_;
};

/// The user of a preview.
class Reader final : public ReportOutlet {
 public:
  explicit Reader(std::function<TakenOut(const ReportRun&)> look) : look_(std::move(look)) {}
  TakenOut Preview(const ReportRun& run) override { return look_(run); }
  TakenOut Print(const ReportRun&, bool) override { return {}; }

 private:
  std::function<TakenOut(const ReportRun&)> look_;
};

}  // namespace

void Round::DiesAt(LetterMoment moment) {
  if (letterPlan_.dies != moment) return;
  user_->Die();
  throw ProcessEnds{};
}

/// Prints all letters of the preview, some or none.
TakenOut Round::LookAtLetters(const ReportRun& run) {
  letters_.Disturbs(LetterLedger::kAll);
  Between(letterPlan_.wild ? 30 : 0);
  if (letterPlan_.wild && saved_ && random_.Chance(15)) OtherWantsLetters();
  if (letterPlan_.wild && saved_ && random_.Chance(15)) OtherMakesLetters();
  DiesAt(LetterMoment::kLookedAt);
  const std::unique_ptr<ReportRows> rows = run.database.Read(
      QStringLiteral("SELECT LetterID, Letter, NameAddress FROM [Letters] WHERE SessionID = '%1' ORDER BY LetterID")
          .arg(user_->app.startup.RunKey));
  TakenOut taken;
  if (!run.follower.MayGoOn()) {
    user_->ui.answers.markLetters = false;
    return taken;
  }
  std::vector<std::pair<QString, QString>> printed;  // text and address
  for (int number = 1; rows->Next() && number <= letterPlan_.printed; ++number) {
    printed.emplace_back(LetterText(rows->At(1).ToText()), rows->At(2).ToText());
    taken.documents.insert(number);
    taken.keys.insert(rows->At(0).ToText());
  }
  if (!letterPlan_.marksByHand && taken.Any() && !Announce(run.follower, taken)) return {};
  for (size_t i = 0; i < printed.size(); ++i)
    letters_.Arrived(static_cast<int>(i) + 1, printed[i].first, printed[i].second);
  if (letterPlan_.marksByHand || !taken.Any()) return {};
  lettersPrinted_ = true;
  DiesAt(LetterMoment::kPrinted);
  run.follower.TookOut(taken);
  DiesAt(LetterMoment::kMarked);
  return taken;
}

/// Tells the run which letters the printer is about to get.
/// \return false when it must not get them
bool Round::Announce(ReportFollower& follower, const TakenOut& taken) {
  lettersPrinted_ = false;
  try {
    follower.AboutToGoOut(taken, {.kind = ReportPlace::Kind::kPrinter, .name = QStringLiteral("Office")});
  } catch (const ReportCancelled&) {
    return false;
  } catch (const DatabaseError& error) {
    story_.Tell(QStringLiteral("    not printed: ") + error.Description());
    return false;
  }
  DiesAt(LetterMoment::kAnnounced);
  return true;
}

/// Checks that nobody else can make letters of the campaign or send it while a preview is open.
void Round::OtherWantsLetters() {
  DeskUser& other = Other();
  story_.Tell(QStringLiteral("  JO wants letters"));
  LetterWatch nobody([](int) {});
  Reader reader([this](const ReportRun&) {
    story_.Fault(QStringLiteral("letters that somebody looks at were made by another desk, too"));
    return TakenOut();
  });
  ReportPrinter reports = other.desk->MakeReportPrinter(reader);
  (void)other.desk->MakeLetterRun(reports, nobody).GenerateLetters(campaign_, AsRtf(letters_.letter), {});
}

/// The first user's computer is silent for a long time after the last letter, before the file or the printer. Meanwhile
/// the second user makes the letters.
void Round::OtherMakesLetters() {
  DeskUser& other = Other();
  if (other.app.host.ComputerName() == QLatin1String(kComputer)) return;
  story_.Tell(QStringLiteral("  silence; JO makes the letters"));
  LongSilence();
  if (letterPlan_.renewalFails) {
    user_->fuse.procedure = QStringLiteral("proc_updp_Campaign_Claim_Seen");
    user_->fuse.burns = Burns::kDiskFull;
  }
  LetterWatch nobody([](int) {});
  Reader reader([](const ReportRun&) { return TakenOut(); });
  ReportPrinter reports = other.desk->MakeReportPrinter(reader);
  const QString file = folder_.Path() + QStringLiteral("/jo%1.pdf").arg(++files_);
  letters_.AtAnotherDesk([&] {
    (void)other.desk->MakeLetterRun(reports, nobody)
        .GenerateLetters(campaign_, AsRtf(letters_.letter), {.pdfFile = file});
    ReadLetterFile(file, letters_);
  });
}

LetterPlan Round::PlanLetters(bool wild) {
  LetterPlan plan{.wild = wild};
  plan.saved = random_.Chance(40);
  if (!wild) return plan;
  plan.again = random_.Chance(12);
  const int printed = random_.Between(0, 99);
  if (printed < 15) plan.printed = 0;
  if (printed >= 15 && printed < 35) plan.printed = random_.Between(1, 10);
  plan.marksByHand = plan.printed == LetterLedger::kAll && random_.Chance(20);
  plan.dies = static_cast<LetterMoment>(random_.Between(0, 12));
  plan.renewalFails = random_.Chance(70);
  if (random_.Chance(40)) {
    user_->fuse.left = random_.Between(1, 40 + 4 * static_cast<int>(ledger_.rows.size()));
    if (random_.Chance(40)) user_->fuse.burns = Burns::kDiskFull;
  } else if (random_.Chance(40)) {
    user_->fuse.procedure =
        random_.Chance(30) ? QStringLiteral("proc_updp_Letters_File") : QStringLiteral("proc_updp_Letters_Sent");
    if (random_.Chance(30)) user_->fuse.burns = Burns::kDiskFull;
  }
  return plan;
}

void Round::MakeLetters(bool wild) {
  ++counts_.runs;
  letterPlan_ = PlanLetters(wild);
  const QString file = letterPlan_.saved ? folder_.Path() + QStringLiteral("/letters%1.pdf").arg(++files_) : QString();
  story_.Tell(QStringLiteral("PAT makes letters, again %1, %2")
                  .arg(letterPlan_.again)
                  .arg(letterPlan_.saved ? file : QStringLiteral("prints %1").arg(letterPlan_.printed)));
  user_->ui.answers = {
      .lettersAgain = letterPlan_.again, .lettersPrinted = lettersPrinted_, .markLetters = letterPlan_.marksByHand};
  letters_.RunBegins(letterPlan_.again);
  const qsizetype logged = user_->desk->resultsLog.Lines().size();
  LetterReport report;
  report.announced = letterPlan_.saved || !letterPlan_.marksByHand;
  LetterSummary summary;
  LetterWatch watch(
      [&](int made) {
        if (!wild || !random_.Chance(30)) return;
        letters_.Disturbs(made);
        random_.Chance(70) ? host_.Withdraw() : host_.ChangeRow();
        watch.cancelled = random_.Chance(5);
      },
      [&] {
        if (wild && saved_ && letterPlan_.saved && random_.Chance(50)) OtherMakesLetters();
      });
  Reader reader([this](const ReportRun& run) { return LookAtLetters(run); });
  try {
    ReportPrinter reports = user_->desk->MakeReportPrinter(reader);
    summary = user_->desk->MakeLetterRun(reports, watch)
                  .GenerateLetters(campaign_, AsRtf(letters_.letter), {.pdfFile = file});
  } catch (const ProcessEnds&) {
    report.died = true;
    ++counts_.deaths;
  }
  report.log = user_->desk->resultsLog.Lines().mid(logged);
  for (const QString& line : report.log)
    story_.Tell(QStringLiteral("    log: ") + line.section(QStringLiteral(" - "), 1).simplified());
  story_.Tell(report.died ? QStringLiteral("  DIES") : QStringLiteral("  done %1").arg(summary.done));
  ReadLetterFile(file, letters_);
  const bool printsAll = letterPlan_.saved || letterPlan_.printed == LetterLedger::kAll;
  report.finished = summary.done && printsAll;
  letters_.RunEnds(report, ReadRows(host_.Database(), campaign_));
  user_->fuse.PutOut();
  if (report.died) Restart();
}

}  // namespace qbx::consent
