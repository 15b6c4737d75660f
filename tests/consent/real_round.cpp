#include "consent/real_round.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QThread>

#include "consent/command_lines.h"
#include "consent/garage_folder.h"
#include "consent/host_program.h"
#include "consent/letter_ledger.h"
#include "consent/make_world.h"
#include "consent/sandbox_post.h"
#include "consent/stored_rows.h"
#include "platform/clock.h"
#include "support/wire/server_under_test.h"

namespace qbx::consent {
namespace {

constexpr int kLongestCommand = 120'000;  // milliseconds
constexpr int kCodeDone = 0;
constexpr int kCodeSomeFailed = 3;

class RealRound {
 public:
  RealRound(const RoundWishes& wishes, int number, const test::SandboxProcess& sandbox, Story& story)
      : story_(story),
        random_(RoundSeed(wishes.seed, number), 101),
        world_(MakeGarage(number, wishes)),
        ledger_(world_, story, clock_),
        letters_(ledger_, world_, story, clock_),
        host_(world_, ledger_, story, served_.Connect(), RoundSeed(wishes.seed, number)),
        post_(sandbox) {
    served_.Fill();
    StoreWorld(world_, {sandbox.HttpPort(), sandbox.SmtpPort()}, host_.Database());
    sandbox.SetCredits(1'000'000);
    served_.TellPrograms();
  }

  RoundCounts Play() {
    post_.SteerNobody();
    if (RunQuery() && Prepare()) {
      for (int runs = random_.Between(1, 2); runs > 0 && !story_.Failed(); --runs) {
        if (random_.Chance(60)) MakeLetters(true);
        if (random_.Chance(60)) post_.SteerSome(ledger_.rows, random_, 25);
        DisturbedRun();
        if (random_.Chance(30)) host_.Withdraw();
      }
      post_.SteerNobody();
      for (int last : {0, 1}) {
        if (story_.Failed()) break;
        story_.Tell(last == 0 ? QStringLiteral("sends; all is well") : QStringLiteral("sends again"));
        EndRun(Call(SendWords(false)), {});
        if (!story_.Failed()) MakeLetters(false);
      }
    }
    counts_.arrived = ledger_.Arrived();
    counts_.letters = letters_.Count();
    return counts_;
  }

 private:
  struct Ended {
    int code = -1;  ///< -1: by a signal
    QJsonObject json;
    QStringList complaints;  ///< the lines of stderr
  };

  static World MakeGarage(int number, const RoundWishes& wishes) {
    RandomSource random(RoundSeed(wishes.seed, number), 1);
    return MakeWorld(random, random.Between(5, 30));
  }

  bool RunQuery();
  bool Prepare();
  void Toggle(Row& row);
  void DisturbedRun();
  void MakeLetters(bool wild);
  [[nodiscard]] QHash<qint64, std::array<Announcement, 2>> Disturb(QProcess& process);
  [[nodiscard]] QStringList SendWords(bool repeat);
  void EndRun(const Ended& ended, const QHash<qint64, std::array<Announcement, 2>>& before);
  void NoteDoubt(const std::vector<StoredRow>& stored);
  [[nodiscard]] std::unique_ptr<QProcess> Start(const QStringList& words);
  [[nodiscard]] Ended Finish(QProcess& process);
  [[nodiscard]] Ended Call(const QStringList& words) { return Finish(*Start(words)); }

  Story& story_;
  RandomSource random_;
  GarageFolder folder_;
  SystemClock clock_;
  test::ServedFolder served_{folder_.Path(), clock_};
  World world_;
  Ledger ledger_;
  LetterLedger letters_;
  HostProgram host_;
  SandboxPost post_;
  QueryPlan plan_;
  int campaign_ = 0;
  bool repeat_ = false;
  int files_ = 0;
  RoundCounts counts_;
};

std::unique_ptr<QProcess> RealRound::Start(const QStringList& words) {
  auto process = std::make_unique<QProcess>();
  story_.Tell(QStringLiteral("marketingctl ") + words.join(u' ').left(200));
  process->start(QStringLiteral(QBX_MARKETINGCTL),
                 QStringList{QStringLiteral("--folder"), folder_.Path(), QStringLiteral("--user"),
                             QStringLiteral("PAT"), QStringLiteral("--json")} +
                     words);
  if (!process->waitForStarted(kLongestCommand)) story_.Fault(QStringLiteral("marketingctl did not start"));
  return process;
}

RealRound::Ended RealRound::Finish(QProcess& process) {
  if (process.state() != QProcess::NotRunning && !process.waitForFinished(kLongestCommand)) {
    story_.Fault(QStringLiteral("marketingctl hangs"));
    process.kill();
    process.waitForFinished();
  }
  Ended ended;
  if (process.exitStatus() == QProcess::NormalExit) ended.code = process.exitCode();
  ended.json = QJsonDocument::fromJson(process.readAllStandardOutput()).object();
  ended.complaints = QString::fromUtf8(process.readAllStandardError()).split(u'\n', Qt::SkipEmptyParts);
  story_.Tell(QStringLiteral("  ends with %1 %2").arg(ended.code).arg(ended.complaints.join(QStringLiteral(" | "))));
  return ended;
}

bool RealRound::RunQuery() {
  plan_ = MakeQueryPlan(random_, world_);
  KeepToCommandLine(plan_);
  if (world_.settings.onlyOptedIn) plan_.filters.chkIncludeOptedOut = false;
  ledger_.templates = {QStringLiteral("{lastname}/{regno}: Dear {contact}, your {make} for £99"),
                       QStringLiteral("{lastname}/{regno}: {contact}"),
                       QStringLiteral("Für {contact}\r\n{currentdate} {duedate}")};
  if (random_.Chance(30)) host_.Withdraw();
  letters_.letter = ledger_.templates.sms;
  const QString letter = folder_.Path() + QStringLiteral("/letter.rtf");
  QFile rtf(letter);
  if (!rtf.open(QIODevice::WriteOnly) || rtf.write(AsRtf(letters_.letter).toLatin1()) < 1)
    story_.Fault(QStringLiteral("no letter"));
  rtf.close();
  const Ended ended = Call(QueryWords(plan_, ledger_.templates) + QStringList{QStringLiteral("--letter"), letter});
  if (ended.code != kCodeDone) story_.Fault(QStringLiteral("the query was refused"));
  campaign_ = ended.json.value(QStringLiteral("campaign")).toInt();
  const std::vector<Picked> picked = Select(world_, plan_, true, world_.settings);
  ledger_.Take(CompareSelection(ReadRows(host_.Database(), campaign_), picked, QStringLiteral("the query"), story_));
  counts_.rows = static_cast<qint64>(ledger_.rows.size());
  return !story_.Failed() && !ledger_.rows.empty();
}

bool RealRound::Prepare() {
  const SendMethods methods = MakeSendMethods(random_);
  const QStringList sendBy = SendByWords(methods);
  if (!sendBy.isEmpty()) {
    if (Call(QStringList{QStringLiteral("results"), QString::number(campaign_)} + sendBy).code != kCodeDone)
      story_.Fault(QStringLiteral("the send methods were refused"));
    ApplyMethods(ledger_.rows, methods, world_.settings);
  }
  for (int clicks = random_.Between(0, 2); clicks > 0; --clicks)
    Toggle(ledger_.rows[static_cast<size_t>(random_.Between(0, static_cast<int>(ledger_.rows.size()) - 1))]);
  CompareFlags(ReadRows(host_.Database(), campaign_), ledger_, story_);
  if (random_.Chance(40)) host_.Withdraw();
  return !story_.Failed();
}

/// A flag set by hand.
void RealRound::Toggle(Row& row) {
  const bool text = random_.Chance(50);
  const Ended ended =
      Call({QStringLiteral("results"), QString::number(campaign_), QStringLiteral("--toggle"),
            QString::number(row.record), text ? QStringLiteral("Send_SMS") : QStringLiteral("Send_Email")});
  if (ended.code != kCodeDone) story_.Fault(QStringLiteral("the flag was not changed"));
  Half& half = text ? row.sms : row.mail;
  half.wanted = !half.wanted;
}

QStringList RealRound::SendWords(bool repeat) {
  repeat_ = repeat;
  ledger_.RunBegins();
  ++counts_.runs;
  QStringList words{QStringLiteral("send"), QString::number(campaign_), QStringLiteral("--yes")};
  if (repeat) words << QStringLiteral("--repeat-delivered");
  return words;
}

void RealRound::DisturbedRun() {
  QStringList words = SendWords(random_.Chance(25));
  if (random_.Chance(30)) words << QStringLiteral("--keep-going");
  if (random_.Chance(10)) words << QStringLiteral("--stop-on-error");
  const auto process = Start(words);
  const QHash<qint64, std::array<Announcement, 2>> before = Disturb(*process);
  EndRun(Finish(*process), before);
}

/// Letters into a file; the program may be killed while it makes them, and at the moment at which the file appears.
void RealRound::MakeLetters(bool wild) {
  ++counts_.runs;
  QString file = folder_.Path() + QStringLiteral("/letters%1.pdf").arg(++files_);
  QStringList words{QStringLiteral("letters"), QString::number(campaign_), QStringLiteral("--pdf"), file};
  // A person looks for the file in which the letters may stand.
  for (const StoredRow& row : ReadRows(host_.Database(), campaign_)) {
    if (row.letterPlace.isEmpty()) continue;
    words << QStringLiteral("--in-doubt")
          << (QFile::exists(row.letterPlace) ? QStringLiteral("sent") : QStringLiteral("not-sent"));
    break;
  }
  letters_.RunBegins(false);
  const auto process = Start(words);
  if (wild && random_.Chance(70)) {
    const bool atFile = random_.Chance(60);
    const int milliseconds = random_.Between(0, 200);
    for (int waited = 0; process->state() != QProcess::NotRunning && !process->waitForFinished(0); ++waited) {
      if (atFile ? QFile::exists(file) : waited >= milliseconds) break;
      QThread::usleep(atFile ? 20 : 1000);
    }
    story_.Tell(QStringLiteral("  kill -9"));
    process->kill();
    ++counts_.deaths;
  }
  const Ended ended = Finish(*process);
  LetterReport report;
  report.finished = ended.code == kCodeDone;
  report.died = ended.code < 0;
  report.announced = true;
  report.log = ended.complaints;
  ReadLetterFile(file, letters_);
  letters_.RunEnds(report, ReadRows(host_.Database(), campaign_));
}

/// Waits for some messages, then kills the program or lets a customer say no.
/// \return the states of all rows before that
QHash<qint64, std::array<Announcement, 2>> RealRound::Disturb(QProcess& process) {
  QHash<qint64, std::array<Announcement, 2>> before;
  const int until = post_.Count() + random_.Between(0, static_cast<int>(ledger_.rows.size()));
  while (post_.Count() < until && !process.waitForFinished(0) && process.state() != QProcess::NotRunning)
    QThread::msleep(1);
  const int what = random_.Between(0, 9);
  if (what < 5) {
    story_.Tell(QStringLiteral("  kill -9"));
    process.kill();
    ++counts_.deaths;
  } else if (what < 8) {
    for (const Row& row : ledger_.rows)
      before[row.record] = {ledger_.Look(row, Channel::kSms), ledger_.Look(row, Channel::kEmail)};
    host_.Withdraw();
    post_.Mark();
  }
  return before;
}

void RealRound::EndRun(const Ended& ended, const QHash<qint64, std::array<Announcement, 2>>& before) {
  const int named = ended.json.value(QStringLiteral("delivered_before")).toInt();
  const auto expected = static_cast<int>(ledger_.HalfDelivered(true).size());
  // A killed program writes no reasons any more.
  if (named > 0 || (ended.code < 0 && expected > 0)) ledger_.AskedToRepeat(ended.code < 0 ? expected : named, repeat_);
  for (const Row& row : ledger_.rows)
    ledger_.RowStarts(row.record);
  post_.Tell(ledger_, before);

  RunReport report;
  report.died = ended.code < 0;
  for (const auto& line : ended.json.value(QStringLiteral("log")).toArray())
    report.log += line.toString();
  for (const QString& line : report.log)
    story_.Tell(QStringLiteral("    log: ") + line.section(QStringLiteral(" - "), 1).simplified());
  const bool broken = !report.log.filter(QStringLiteral("not enough SMS credits are remaining")).isEmpty();
  report.finished = (ended.code == kCodeDone || ended.code == kCodeSomeFailed) && !broken;
  const std::vector<StoredRow> stored = ReadRows(host_.Database(), campaign_);
  if (report.died) NoteDoubt(stored);
  ledger_.RunEnds(report, stored);
}

/// Checks that a killed process had at most one message on its way.
void RealRound::NoteDoubt(const std::vector<StoredRow>& stored) {
  int doubtful = 0;
  for (const StoredRow& now : stored) {
    const Row* row = ledger_.Find(now.record);
    if (row == nullptr) continue;
    int ofRow = 0;
    for (const Channel channel : {Channel::kSms, Channel::kEmail})
      ofRow += now.journal.Of(channel) == JournalState::kSending && !row->Of(channel).mayDoubt ? 1 : 0;
    if (ofRow > 0) ledger_.MayBeInDoubt(now.record);
    doubtful += ofRow;
  }
  if (doubtful > 1) story_.Fault(QStringLiteral("one killed run left %1 messages in doubt").arg(doubtful));
}

}  // namespace

RoundCounts PlayRealRound(const RoundWishes& wishes, int number, const test::SandboxProcess& sandbox, Story& story) {
  return RealRound(wishes, number, sandbox, story).Play();
}

}  // namespace qbx::consent
