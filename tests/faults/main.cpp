// fault_table: causes each fault at each place of a campaign, and prints what the program did.
//
// The program is marketingctl. Its server is tds_server with a sample garage. After each fault, the same command runs
// again without a fault. The command must end within its time-outs, with a clear message or as without the fault.
// Nobody may get a message twice or be left out, and no row may be lost.

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
constexpr int kWithConsent = 9;
constexpr int kConnectionsOfStart = 2;  // with the master database, then with the program's
constexpr int kNoticeable = 10000;      // milliseconds
constexpr int kLongestRun = 90000;      // milliseconds: three time-outs and a busy computer

/// One garage with its own server, and a campaign of which nothing was sent.
class Road {
 public:
  explicit Road(const test::SandboxProcess& sandbox) : sandbox_(sandbox), garage_(kCustomers) {
    sandbox_.Reset();
    garage_.MakeEverybodyReachable();
    garage_.Sql(
        "UPDATE Customers SET Consent_Response = NULL WHERE Customer IN (SELECT Customer FROM Customers LIMIT 3)");
    garage_.Use(sandbox_);
    const QString letter = garage_.Folder().File(QStringLiteral("letter.rtf"));
    garage_.Folder().Write(QStringLiteral("letter.rtf"), "{\\rtf1 Dear \\{contact\\}}");
    const QJsonValue made =
        garage_.Done("query --query %1 --sms %3 --subject %3 --body %3 --letter %2 --save Everybody",
                     {QStringLiteral("All Customers"), letter, QStringLiteral("Dear {contact}")});
    campaign_ = QString::number(test::Number(made, "campaign"));
    (void)garage_.Done("results %1 --send-by sms=0 email=0 letter=0", {campaign_});
    TellPrograms();
  }

  [[nodiscard]] tds::Server& Server() { return server_; }

  [[nodiscard]] test::CtlResult Run(const Place& place) const {
    return garage_.Run(place.command, {campaign_, garage_.Folder().File(QStringLiteral("letters.pdf")),
                                       QStringLiteral("All Customers")});
  }

  /// What is wrong after the command ran again without a fault; empty: nothing.
  [[nodiscard]] QString Wrong(Promise promise) const {
    const QString rows =
        One("SELECT count(DISTINCT Customer) || '/' || count(*) FROM [Campaign Results] WHERE CampaignID = %1");
    if (rows != QStringLiteral("%1/%1").arg(kWithConsent)) return QStringLiteral("rows: ") + rows;
    switch (promise) {
      case Promise::kRows:
        return {};
      case Promise::kMessages:
        return WrongMessages();
      case Promise::kLetters:
        return Zero(
            "letters that are due",
            "SELECT count(*) FROM [Campaign Results] r WHERE CampaignID = %1 AND Send_Letter = 1 AND NOT EXISTS (SELECT 1 FROM Send_Journal j WHERE j.RecordID = r.RecordID AND Channel = 3)");
      case Promise::kSaved:
        return Zero("campaigns too many or too few",
                    "SELECT count(*) - 1 FROM Marketing_Campaigns WHERE Campaign_Name = 'Another'");
    }
    return {};
  }

 private:
  void TellPrograms() const {
    const QString text = QStringLiteral(
        "Windows Registry Editor Version 5.00\r\n\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Korvel Manager\\Login]\r\n\"Server\"=\"127.0.0.1,%1\"\r\n");
    garage_.Folder().Write(QStringLiteral("registry/machine.reg"), text.arg(server_.Port()).toUtf8());
  }

  [[nodiscard]] QString WrongMessages() const {
    const int doubt =
        One("SELECT count(*) FROM Send_Journal WHERE CampaignID = %1 AND State = 0 AND Channel <> 3").toInt();
    for (const char* kind : {"texts", "mails"}) {
      const test::Received received = test::Accepted(sandbox_, kind);
      const auto missing = kWithConsent - static_cast<int>(received.size());
      if (missing > doubt) return QStringLiteral("%1: %2 got none").arg(QLatin1String(kind)).arg(missing);
      for (const auto& [to, count] : received)
        if (count != 1) return QStringLiteral("%1 got %2").arg(to).arg(count);
    }
    const int open = One("SELECT count(*) FROM [Campaign Results] WHERE CampaignID = %1 AND Processed = 0").toInt();
    return open > doubt ? QStringLiteral("not marked: %1").arg(open) : QString();
  }

  [[nodiscard]] QString Zero(const char* what, const char* sql) const {
    const QString found = One(sql);
    return found == QLatin1String("0") ? QString() : QLatin1String(what) + QStringLiteral(": ") + found;
  }

  [[nodiscard]] QString One(const char* sql) const {
    const SqliteFile file = OpenHostFile(garage_.DatabaseFile());
    ExecuteSql(file.Handle(), "PRAGMA busy_timeout = 20000");  // the server closes its sessions meanwhile
    SqliteStatement statement(file.Handle(),
                              QString::fromLatin1(sql).replace(QLatin1String("%1"), campaign_).toStdString());
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

/// The last message, which tells what went wrong.
QString Said(const test::CtlResult& result) {
  QString text = QString::fromUtf8(result.err).simplified();
  const qsizetype answered = text.lastIndexOf(QLatin1String("[answered"));
  if (answered >= 0) text = text.mid(text.indexOf(u']', answered) + 2);
  if (text.isEmpty())
    text = QString::fromUtf8(result.out).section(QLatin1String("\"message\":\""), 1).section(u'"', 0, 0);
  return QStringLiteral("%1: %2").arg(result.code).arg(text.left(160));
}

/// Whether the second run ended in an allowed way: done, with something in doubt, or with nothing left to do.
bool EndedWell(const test::CtlResult& again) {
  return again.code == 0 || again.code == 3 || again.err.contains("doubt") || again.out.contains("doubt") ||
         again.out.contains("already");
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
  if (trouble.refusals > 0)
    road.Server().PlannedFaults().Add(
        {.moment = tds::FaultMoment::kConnect, .skip = kConnectionsOfStart, .times = trouble.refusals});
  QElapsedTimer timer;
  timer.start();
  const test::CtlResult first = road.Run(place);
  const auto took = timer.elapsed();
  const bool happened = road.Server().PlannedFaults().Happened() > 0;
  road.Server().PlannedFaults().Clear();
  if (!happened) return {QStringLiteral("did not happen")};
  if (first.code < 0) return {QStringLiteral("crashed, or did not end: ") + Said(first)};
  if (took > kLongestRun) return {QStringLiteral("took %1 s").arg(took / 1000)};
  if (first.code != 0 && first.err.isEmpty() && !first.out.contains("error"))
    return {QStringLiteral("ended with %1 and no word").arg(first.code)};
  const test::CtlResult second = road.Run(place);
  QString said = first.code == 0 ? QStringLiteral("went on silently") : Said(first);
  if (took > kNoticeable) said += QStringLiteral(" (%1 s)").arg(took / 1000);
  if (!EndedWell(second)) return {said + QStringLiteral("; again ") + Said(second)};
  const QString wrong = road.Wrong(place.promise);
  if (!wrong.isEmpty()) return {said + QStringLiteral("; ") + wrong};
  return {second.code == 3 ? said + QStringLiteral("; then in doubt") : said, true};
}

}  // namespace
}  // namespace qbx::faults

int main(int argc, char** argv) {
  using namespace qbx::faults;
  const QCoreApplication application(argc, argv);
  CLI::App command("What the program does with each fault of its server at each place of the road of one campaign");
  bool all = false;
  std::string only;
  command.add_flag("--all", all, "All faults, also those that last as long as a time-out");
  command.add_option("--place", only, "This place alone");
  CLI11_PARSE(command, argc, argv);
  const qbx::test::SandboxProcess sandbox;
  int bad = 0;
  for (const Place& place : kPlaces) {
    if (!only.empty() && only != place.name) continue;
    const std::span<const Trouble> troubles =
        place.match == nullptr ? std::span<const Trouble>(kConnectTroubles) : kTroubles;
    for (const Trouble& trouble : troubles) {
      if (trouble.byHand && !all) continue;
      const Outcome outcome = Play(sandbox, place, trouble);
      bad += outcome.good ? 0 : 1;
      std::printf("| %s | %s | %s%s |\n", place.name, trouble.name,
                  outcome.good ? "" : "WRONG: ", outcome.text.toUtf8().constData());
      std::fflush(stdout);
    }
  }
  return bad == 0 ? 0 : 1;
}
