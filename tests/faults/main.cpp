// fault_table: runs the program through each fault at each place of the road of one campaign, and says what came of it.
//
// The program is marketingctl, its server the small one in front of a sample garage. After each fault the same command
// runs again without one. It must end with a clear message or as if nothing had been, within its time-outs; nobody may
// be sent to twice, nobody be left out, and no row be lost.

#include <CLI/CLI.hpp>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <cstdio>

#include "database/embedded/engine.h"
#include "faults/places.h"
#include "hostdb/database_upgrade.h"
#include "hostdb/host_file.h"
#include "marketingctl/garage.h"
#include "tds_server/server.h"

namespace qbx::faults {
namespace {

constexpr int kCustomers = 12;
constexpr int kLongestRun = 90000;  // milliseconds: three time-outs and a busy computer

/// One garage behind a server of its own, with a campaign of which nothing was sent.
class Road {
 public:
  explicit Road(const test::SandboxProcess& sandbox) : sandbox_(sandbox), garage_(kCustomers) {
    sandbox_.Reset();
    garage_.MakeEverybodyReachable();
    garage_.Use(sandbox_);
    campaign_ = garage_.MakeCampaign();
    const QString key = QStringLiteral("[HKEY_LOCAL_MACHINE\\SOFTWARE\\Korvel Manager\\Login]");
    garage_.Folder().Write(
        QStringLiteral("registry/machine.reg"),
        QStringLiteral("Windows Registry Editor Version 5.00\r\n\r\n%1\r\n\"Server\"=\"127.0.0.1,%2\"\r\n")
            .arg(key)
            .arg(server_.Port())
            .toUtf8());
  }

  [[nodiscard]] tds::Server& Server() { return server_; }

  test::CtlResult Run(const Place& place) const {
    return garage_.Run(place.command, {campaign_, garage_.Folder().File(QStringLiteral("letters.pdf")),
                                       QStringLiteral("All Customers")});
  }

  /// What is wrong now that the command has run again without a fault; empty: nothing.
  [[nodiscard]] QString Wrong(const Place& place) const {
    const QString rows =
        One("SELECT count(DISTINCT Customer) || '/' || count(*) FROM [Campaign Results] WHERE CampaignID = %1");
    if (rows != QStringLiteral("%1/%1").arg(kCustomers)) return QStringLiteral("rows: ") + rows;
    const QByteArray command = place.command;
    if (!command.startsWith("send")) return {};
    for (const char* kind : {"texts", "mails"}) {
      const test::Received received = test::Accepted(sandbox_, kind);
      if (received.size() != kCustomers)
        return QStringLiteral("%1: %2 got one").arg(QLatin1String(kind)).arg(received.size());
      for (const auto& [to, count] : received)
        if (count != 1) return QStringLiteral("%1 got %2").arg(to).arg(count);
    }
    const QString open = One(
        "SELECT count(*) FROM [Campaign Results] WHERE CampaignID = %1 AND (Send_SMS = 1 OR Send_Email = 1) AND Processed = 0");
    return open == QLatin1String("0") ? QString() : QStringLiteral("not marked: ") + open;
  }

 private:
  [[nodiscard]] QString One(const char* sql) const {
    const SqliteFile file = OpenHostFile(garage_.DatabaseFile());
    SqliteStatement statement(file.Handle(), QString::fromLatin1(sql).arg(campaign_).toStdString());
    return statement.Step() ? QString::fromUtf8(statement.TextAt(0)) : QString();
  }

  const test::SandboxProcess& sandbox_;
  test::Garage garage_;
  SystemClock clock_;
  EmbeddedEngine engine_{garage_.Path(), clock_, KeepUpToDate};
  tds::Server server_{engine_};
  QString campaign_;
};

struct Outcome {
  QString text;
  bool good = false;
};

QString FirstLine(const test::CtlResult& result) {
  return QString::fromUtf8(result.err).simplified().left(150);
}

Outcome Play(const test::SandboxProcess& sandbox, const Place& place, const Trouble& trouble) {
  Road road(sandbox);
  const bool connecting = place.match == nullptr;
  road.Server().PlannedFaults().Add({.kind = trouble.kind,
                                     .moment = trouble.moment,
                                     .match = QString::fromLatin1(connecting ? "" : place.match),
                                     .skip = place.skip,
                                     .times = connecting ? 0 : 1,
                                     .row = 0,
                                     .number = trouble.number,
                                     .text = QStringLiteral("Transaction was deadlocked. Rerun the transaction.")});
  QElapsedTimer timer;
  timer.start();
  const test::CtlResult first = road.Run(place);
  const auto took = timer.elapsed();
  if (road.Server().PlannedFaults().Happened() == 0)
    return {QStringLiteral("did not happen"), trouble.moment == tds::FaultMoment::kRow};
  road.Server().PlannedFaults().Clear();
  if (first.code < 0) return {QStringLiteral("crashed, or did not end: ") + FirstLine(first)};
  if (took > kLongestRun) return {QStringLiteral("took %1 s").arg(took / 1000)};
  if (first.code != 0 && first.err.isEmpty()) return {QStringLiteral("ended with %1 and no word").arg(first.code)};
  const test::CtlResult second = road.Run(place);
  const QString said = first.code == 0 ? QStringLiteral("went on silently")
                                       : QStringLiteral("%1: %2").arg(first.code).arg(FirstLine(first));
  if (second.code != 0 && first.code != 0)
    return {said + QStringLiteral("; again %1: %2").arg(second.code).arg(FirstLine(second))};
  const QString wrong = road.Wrong(place);
  if (!wrong.isEmpty()) return {said + QStringLiteral("; ") + wrong};
  return {said, true};
}

}  // namespace
}  // namespace qbx::faults

int main(int argc, char** argv) {
  using namespace qbx::faults;
  const QCoreApplication application(argc, argv);
  CLI::App command("What the program does with each fault of its server at each place of the road of one campaign");
  bool all = false;
  std::string only;
  command.add_flag("--all", all, "Also the faults that last as long as a time-out");
  command.add_option("--place", only, "This place alone");
  CLI11_PARSE(command, argc, argv);
  const qbx::test::SandboxProcess sandbox;
  int bad = 0;
  for (const Place& place : kPlaces) {
    if (!only.empty() && only != place.name) continue;
    const std::span<const Trouble> troubles =
        place.match == nullptr ? std::span<const Trouble>(kConnectTroubles) : kTroubles;
    for (const Trouble& trouble : troubles) {
      if (trouble.slow && !all) continue;
      const Outcome outcome = Play(sandbox, place, trouble);
      bad += outcome.good ? 0 : 1;
      std::printf("| %s | %s | %s%s |\n", place.name, trouble.name,
                  outcome.good ? "" : "WRONG: ", outcome.text.toUtf8().constData());
      std::fflush(stdout);
    }
  }
  return bad == 0 ? 0 : 1;
}
