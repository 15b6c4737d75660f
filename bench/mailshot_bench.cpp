// Compares a mailshot (merge, journal, send, record, mark and counters) with a bare libcurl loop. The loop sends the
// same bytes over one kept connection and makes the same durable commits to the same disk.
//
//   mailshot_bench email|text [ROWS [ROUNDS]]     TMPDIR chooses the disk
//
// Prints medians. The two sides run in turn. Both elapsed time and processor time of the sending thread are printed.
// The processor time is steadier on a busy computer.

#include <QCoreApplication>
#include <cstring>

#include "mailshot_peer.h"
#include "support/loopback_sink.h"
#include "support/mailshot_rows.h"
#include "support/rounds.h"
#include "support/sample_program.h"

namespace {

using namespace qbx;
using namespace qbx::bench;

constexpr int kCampaign = -5;
using Kind = MailshotPeer::Kind;

std::vector<SentMessage> ReadSent(sqlite3* database, Kind kind, std::vector<std::string> bytes) {
  SqliteStatement records(database,
                          kind == Kind::kEmail
                              ? "SELECT AC_Ref, Email_To, Email_Subject, Email_Text FROM Emails ORDER BY RecordID"
                              : "SELECT Customer, Mobile_Number, '', Message FROM SMS ORDER BY RecordID");
  SqliteStatement rows(database, "SELECT RecordID FROM [Campaign Results] ORDER BY Customer");
  const auto text = [&records](int column) { return records.TextAt(column).toStdString(); };
  std::vector<SentMessage> messages;
  for (std::string& each : bytes) {
    if (!records.Step() || !rows.Step()) Fail("records are missing");
    messages.push_back({std::move(each), text(0), text(1), text(2), text(3), rows.IntegerAt(0)});
  }
  return messages;
}

/// Elapsed and processor milliseconds of the rounds.
struct Times {
  std::vector<double> elapsed;
  std::vector<double> processor;

  template <typename Work>
  void Add(const Work& work) {
    const double before = ThreadMilliseconds();
    elapsed.push_back(Milliseconds(work));
    processor.push_back(ThreadMilliseconds() - before);
  }
};

class Bench {
 public:
  Bench(Kind kind, int rows)
      : kind_(kind),
        rows_(rows),
        program_(10),
        sink_(kind == Kind::kEmail ? LoopbackSink::Protocol::kSmtp : LoopbackSink::Protocol::kHttp) {
    AddMailshotRows(OpenPlain(program_.File(), program_.Time()).Handle(), kCampaign,
                    kind == Kind::kText ? Channel::kSms : Channel::kEmail, rows);
    peerFile_ = program_.CopyForPeer();
    database_.emplace(OpenPlain(program_.File(), program_.Time()));
    program_.Start();
    Options& options = program_.App().options;
    options.SMTP_Server = QStringLiteral("127.0.0.1");
    options.SMTP_Port = QString::number(sink_.Port());
    options.SMTP_UserName = options.SMTP_Password = QString();
    options.SMS_Server = QStringLiteral("127.0.0.1:") + options.SMTP_Port;
  }

  void Run(int rounds) {
    sink_.Keep(true);
    SendOurs();
    sink_.Keep(false);
    std::vector<std::string> bytes = sink_.TakeKept();
    if (kind_ == Kind::kText) bytes.erase(bytes.begin());  // the request about the credits
    const std::vector<SentMessage> messages = ReadSent(database_->Handle(), kind_, std::move(bytes));
    MailshotPeer peer(kind_, peerFile_, program_.Time(), kCampaign, sink_.Port());
    const SqliteFile peerDatabase = OpenPlain(peerFile_, program_.Time());
    for (int round = 0; round < rounds; ++round) {
      ResetMailshot(peerDatabase.Handle());
      peer_.Add([&] { peer.Send(messages); });
      if (sink_.TakeCount() != rows_) Fail("the peer's messages did not all arrive");
      ResetMailshot(database_->Handle());
      ours_.Add([&] { SendOurs(); });
    }
    Print(rounds);
  }

 private:
  void SendOurs() {
    MailshotObserver observer;
    Mailshot run = program_.Desk().MakeMailshot(observer);
    const MailshotSummary summary = run.Send(kCampaign, SampleTemplates());
    const int sent = kind_ == Kind::kEmail ? summary.emailSent : summary.smsSent;
    if (sent != rows_) Fail(program_.Ui().LastMessage().toUtf8().constData());
    if (sink_.TakeCount() != rows_ + (kind_ == Kind::kText ? 1 : 0)) Fail("the messages did not all arrive");
  }

  void Print(int rounds) const {
    const char* name = kind_ == Kind::kEmail ? "e-mail" : "text";
    const auto line = [&](const char* what, const std::vector<double>& ours, const std::vector<double>& peer) {
      std::vector<double> own;
      for (std::size_t i = 0; i < ours.size(); ++i)
        own.push_back((ours[i] - peer[i]) * 1000 / rows_);
      std::printf("%-10s ours %8.1f  peer %8.1f  our own %8.1f us per %s (goal %d)\n", what,
                  Median(ours) * 1000 / rows_, Median(peer) * 1000 / rows_, Median(own), name,
                  kind_ == Kind::kEmail ? 150 : 100);
    };
    std::printf("%d rows, median of %d rounds\n", rows_, rounds);
    line("elapsed", ours_.elapsed, peer_.elapsed);
    line("processor", ours_.processor, peer_.processor);
  }

  Kind kind_;
  int rows_;
  SampleProgram program_;
  LoopbackSink sink_;
  QString peerFile_;
  std::optional<SqliteFile> database_;
  Times ours_;
  Times peer_;
};

}  // namespace

int main(int argc, char** argv) {
  StayOnOneProcessor();
  SettleTimeZone();
  QCoreApplication application(argc, argv);
  if (argc < 2) Fail("usage: mailshot_bench email|text [ROWS [ROUNDS]]");
  const Kind kind = std::strcmp(argv[1], "text") == 0 ? Kind::kText : Kind::kEmail;
  const int rows = argc > 2 ? std::atoi(argv[2]) : 1000;
  Bench(kind, rows).Run(argc > 3 ? std::atoi(argv[3]) : 5);
}
