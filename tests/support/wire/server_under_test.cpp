#include "support/wire/server_under_test.h"

#include <QDir>
#include <QFile>

#include "hostdb/database_upgrade.h"
#include "tds_server/server.h"

namespace qbx::test {
namespace {

QString NameOf(const tds::Server& server) {
  return QStringLiteral("127.0.0.1,%1").arg(server.Port());
}

constexpr int kSeconds = 120;  // a SQL Server compiles each statement first

/// Brings a SQL Server's database back to its state after the script, with new last keys.
void EmptyDatabase(Session& session) {
  static constexpr const char* kTables[] = {"[Campaign Results]",
                                            "Send_Journal",
                                            "Campaign_Results_Counters",
                                            "Campaign_Claims",
                                            "Customers",
                                            "Customer_Types",
                                            "Enquiry_Sources",
                                            "Makes",
                                            "Vehicles",
                                            "Engines",
                                            "Services",
                                            "Letters",
                                            "SMS",
                                            "Emails",
                                            "_Log",
                                            "_Marketing_Log",
                                            "Marketing_Campaigns_History",
                                            "Marketing_Campaigns",
                                            "_OptionsUser",
                                            "_Options"};
  for (const char* table : kTables)
    session.Execute(QStringLiteral("DELETE FROM ") + QLatin1String(table));
  session.Execute(QStringLiteral("UPDATE _Keys SET Last_Value = CASE Key_Name WHEN 'TEMP' THEN 0 ELSE 1000 END"));
  session.Execute(QStringLiteral("INSERT INTO _Options (Options_Company) VALUES ('A')"));
}

}  // namespace

ServerUnderTest::ServerUnderTest(EmbeddedEngine& engine)
    : engine_(engine), server_(IsWire() ? std::make_unique<tds::Server>(engine) : nullptr) {
  if (!server_ && IsSqlServer()) EmptyDatabase(*Connect({}, {}, kSeconds));
}

ServerUnderTest::~ServerUnderTest() = default;

bool ServerUnderTest::IsWire() {
  return qEnvironmentVariableIsSet("QBX_TEST_WIRE");
}

bool ServerUnderTest::IsSqlServer() {
  return qEnvironmentVariableIsSet("QBX_TEST_SERVER");
}

std::unique_ptr<Session> ServerUnderTest::Connect(const ConnectionTarget& target, const Login& login, int seconds) {
  if (!server_ && IsSqlServer()) {
    const QStringList parts = qEnvironmentVariable("QBX_TEST_SERVER").split(u' ');
    std::unique_ptr<Session> session = driver_.Connect({.server = parts.value(0), .database = parts.value(1)},
                                                       {parts.value(2), parts.value(3)}, kSeconds);
    session->SetCommandTimeout(kSeconds);
    return session;
  }
  if (!server_) return engine_.Connect(target, login, seconds);
  std::unique_ptr<Session> session =
      driver_.Connect({.server = NameOf(*server_), .database = target.database}, login, seconds);
  session->SetCommandTimeout(seconds);
  return session;
}

SessionFactory ServerUnderTest::Factory() {
  return [this](const ConnectionTarget& target, const Login& login, int seconds) {
    return Connect(target, login, seconds);
  };
}

void ServerUnderTest::BreakSessions() {
  if (server_)
    server_->EndConnections();
  else
    engine_.BreakSessions();
}

struct ServedFolder::Served {
  Served(const QString& programFolder, const Clock& clock)
      : folder(programFolder), engine(programFolder, clock, KeepUpToDate) {}
  QString folder;
  EmbeddedEngine engine;
  tds::Server server{engine};
};

ServedFolder::ServedFolder(const QString& folder, const Clock& clock)
    : served_(ServerUnderTest::IsWire() ? std::make_unique<Served>(folder, clock) : nullptr) {}

ServedFolder::~ServedFolder() = default;

QString ServedFolder::ServerName() const {
  return served_ ? NameOf(served_->server) : QString();
}

void ServedFolder::TellPrograms() const {
  if (!served_) return;
  const QString registry = served_->folder + QStringLiteral("/registry");
  QFile file(registry + QStringLiteral("/machine.reg"));
  const QByteArray text =
      QStringLiteral(
          "Windows Registry Editor Version 5.00\r\n\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Korvel Manager\\Login]\r\n\"Server\"=\"%1\"\r\n")
          .arg(ServerName())
          .toUtf8();
  if (!QDir().mkpath(registry) || !file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
    qFatal("%s: %s", qPrintable(file.fileName()), qPrintable(file.errorString()));
}

SessionFactory ServedFolder::Wrap(SessionFactory sessions) const {
  if (!served_) return sessions;
  return [name = ServerName(), sessions = std::move(sessions)](const ConnectionTarget& target, const Login& login,
                                                               int seconds) {
    const bool embedded = IsEmbeddedServer(target.server);
    return sessions({.server = embedded ? name : target.server, .database = target.database}, login, seconds);
  };
}

void ServedFolder::BreakSessions() {
  if (served_) served_->server.EndConnections();
}

}  // namespace qbx::test
