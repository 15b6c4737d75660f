// Ends "marketingctl send" at each of its writes, syncs and sends in turn, resumes it, and checks the messages that
// arrived: none twice, none lost. Run by hand; see ../README.md.

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <cstdio>
#include <map>

#include "consent/garage_folder.h"
#include "consent/store_world.h"
#include "support/sandbox_process.h"
#include "support/wire/server_under_test.h"

namespace qbx::consent {
namespace {

constexpr int kRows = 5;
constexpr int kFirst = 1001;

struct Ended {
  bool killed = false;
  int code = 0;
  QJsonObject json;
};

/// Five customers, each with a mobile and an address.
World FiveCustomers() {
  World world;
  for (int i = 0; i < kRows; ++i) {
    Customer customer;
    customer.key = kFirst + i;
    customer.lastname = QStringLiteral("Nr%1").arg(customer.key);
    customer.mobile = QStringLiteral("0770000%1").arg(customer.key);
    customer.email = QStringLiteral("c%1@x.test").arg(customer.key);
    customer.consent = 1;
    world.customers[customer.key] = customer;
  }
  return world;
}

class KillAtEveryWrite {
 public:
  KillAtEveryWrite() {
    const SystemClock clock;
    StoreWorld(FiveCustomers(), {sandbox_.HttpPort(), sandbox_.SmtpPort()},
               *test::ServedFolder(folder_.Path(), clock).ConnectToFile());
    const Ended made =
        Run(folder_.Path(), {QStringLiteral("query"), QStringLiteral("--query"), QStringLiteral("All Customers"),
                             QStringLiteral("--sms"), QStringLiteral("Dear {contact}"), QStringLiteral("--subject"),
                             QStringLiteral("For {contact}"), QStringLiteral("--body"),
                             QStringLiteral("Dear {contact}"), QStringLiteral("--save"), QStringLiteral("Five")});
    campaign_ = QString::number(made.json.value(QStringLiteral("campaign")).toInt());
    (void)Run(folder_.Path(), {QStringLiteral("results"), campaign_, QStringLiteral("--send-by"),
                               QStringLiteral("sms=0"), QStringLiteral("email=0")});
  }

  int All() {
    const int calls = CountCalls();
    std::printf("A run of %d rows makes %d calls that write, sync or send.\n", kRows, calls);
    for (const bool after : {false, true}) {
      for (int call = 1; call <= calls; ++call)
        One(call, after);
    }
    std::printf(
        "%d points, %d of them ended the program: %d repeats, %d lost, %d messages in doubt (%d of which had arrived).\n",
        points_, ended_, repeats_, lost_, doubts_, doubtsArrived_);
    return repeats_ + lost_ == 0 ? 0 : 1;
  }

 private:
  /// A copy of the garage, ready to be sent.
  class Copy {
   public:
    explicit Copy(const QString& from) {
      for (const QString& name : QDir(from).entryList(QDir::Files))
        QFile::copy(from + u'/' + name, folder_.File(name));
      served_.Fill();
      served_.TellPrograms();
    }
    [[nodiscard]] QString Path() const { return folder_.Path(); }
    [[nodiscard]] QString File(const QString& name) const { return folder_.File(name); }

   private:
    test::TempFolder folder_;
    SystemClock clock_;
    test::ServedFolder served_{folder_.Path(), clock_};
  };

  static Ended Run(const QString& folder, const QStringList& words, const QMap<QString, QString>& environment = {}) {
    QProcess process;
    QProcessEnvironment all = QProcessEnvironment::systemEnvironment();
    for (auto it = environment.cbegin(); it != environment.cend(); ++it)
      all.insert(it.key(), it.value());
    process.setProcessEnvironment(all);
    process.start(QStringLiteral(QBX_MARKETINGCTL),
                  QStringList{QStringLiteral("--folder"), folder, QStringLiteral("--user"), QStringLiteral("PAT"),
                              QStringLiteral("--json")} +
                      words);
    process.waitForFinished(120'000);
    return {process.exitStatus() == QProcess::CrashExit, process.exitCode(),
            QJsonDocument::fromJson(process.readAllStandardOutput()).object()};
  }

  [[nodiscard]] QStringList SendWords() const { return {QStringLiteral("send"), campaign_, QStringLiteral("--yes")}; }

  [[nodiscard]] int CountCalls() const {
    const Copy copy(folder_.Path());
    const QString file = copy.File(QStringLiteral("calls.txt"));
    (void)Run(
        copy.Path(), SendWords(),
        {{QStringLiteral("LD_PRELOAD"), QStringLiteral(QBX_END_AT_CALL)}, {QStringLiteral("QBX_END_COUNT"), file}});
    QFile counted(file);
    return counted.open(QIODevice::ReadOnly) ? counted.readAll().trimmed().toInt() : 0;
  }

  void One(int call, bool after);
  [[nodiscard]] std::map<QString, int> Arrived() const;

  test::SandboxProcess sandbox_;
  GarageFolder folder_;
  QString campaign_;
  int points_ = 0;
  int ended_ = 0;
  int repeats_ = 0;
  int lost_ = 0;
  int doubts_ = 0;
  int doubtsArrived_ = 0;
};

/// Every number and address, and how often it was reached.
std::map<QString, int> KillAtEveryWrite::Arrived() const {
  std::map<QString, int> arrived;
  for (const char* kind : {"texts", "mails"}) {
    const QByteArray records = sandbox_.Ask(QLatin1String("/api/") + QLatin1String(kind));
    for (const auto& record : QJsonDocument::fromJson(records).array()) {
      if (record[QStringLiteral("outcome")] != QStringLiteral("accepted")) continue;
      const QJsonValue to = record[QStringLiteral("to")];
      ++arrived[to.isArray() ? to[0].toString() : to.toString()];
    }
  }
  return arrived;
}

void KillAtEveryWrite::One(int call, bool after) {
  ++points_;
  sandbox_.Reset();
  const Copy copy(folder_.Path());
  const Ended first = Run(copy.Path(), SendWords(),
                          {{QStringLiteral("LD_PRELOAD"), QStringLiteral(QBX_END_AT_CALL)},
                           {QStringLiteral("QBX_END_AT"), QString::number(call)},
                           {QStringLiteral("QBX_END_AFTER"), after ? QStringLiteral("1") : QStringLiteral("0")}});
  ended_ += first.killed ? 1 : 0;
  const Ended second = Run(copy.Path(), SendWords());
  const Ended third = Run(copy.Path(), SendWords());
  const Ended log = Run(copy.Path(), {QStringLiteral("log"), QStringLiteral("--campaign"), campaign_});
  std::map<QString, int> arrived = Arrived();
  const QString at =
      QStringLiteral("call %1, %2").arg(call).arg(after ? QStringLiteral("after it") : QStringLiteral("before it"));
  const auto complain = [&at](const QString& what) { std::printf("%s: %s\n", qPrintable(at), qPrintable(what)); };
  for (const auto& [to, times] : arrived) {
    if (times < 2) continue;
    ++repeats_;
    complain(to + QStringLiteral(" got it %1 times").arg(times));
  }
  // The row of a message in doubt is left alone whole.
  std::map<int, int> doubtful;
  for (const auto& message : log.json.value(QStringLiteral("in_doubt")).toArray()) {
    ++doubtful[message[QStringLiteral("Customer")].toInt()];
    ++doubts_;
    const bool text = message[QStringLiteral("Channel")].toInt() == 1;
    doubtsArrived_ += arrived[message[text ? QStringLiteral("Mobile") : QStringLiteral("Email")].toString()];
  }
  for (const auto& [key, customer] : FiveCustomers().customers) {
    if (doubtful.contains(key)) continue;
    for (const QString& to : {*customer.mobile, *customer.email}) {
      if (arrived[to] > 0) continue;
      ++lost_;
      complain(to + QStringLiteral(" got nothing and is not in doubt"));
    }
  }
  const bool wrongCode = (second.code != 0 && second.code != 3) || (third.code != 0 && third.code != 3);
  if (wrongCode || second.killed || doubtful.size() > 1)
    complain(QStringLiteral("the runs after it ended with %1 and %2, %3 rows in doubt")
                 .arg(second.code)
                 .arg(third.code)
                 .arg(doubtful.size()));
}

}  // namespace
}  // namespace qbx::consent

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  return qbx::consent::KillAtEveryWrite().All();
}
