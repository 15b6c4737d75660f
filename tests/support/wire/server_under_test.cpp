#include "support/wire/server_under_test.h"

#include <QDir>
#include <QFile>

#include "database/recordset.h"
#include "hostdb/database_upgrade.h"
#include "tds_server/server.h"

namespace qbx::test {
namespace {

QString NameOf(const tds::Server& server) {
  return QStringLiteral("127.0.0.1,%1").arg(server.Port());
}

constexpr int kSeconds = 120;  // a SQL Server compiles each statement first
/// The database of a program folder, and of a SQL Server that stands in for it.
constexpr char kDatabase[] = "QBXKorvelManager";

/// The words of QBX_TEST_SERVER.
QStringList NamedServer() {
  return qEnvironmentVariable("QBX_TEST_SERVER").split(u' ');
}

std::unique_ptr<Session> ConnectToSqlServer() {
  static OdbcDriver driver;
  const QStringList parts = NamedServer();
  std::unique_ptr<Session> session = driver.Connect({.server = parts.value(0), .database = parts.value(1)},
                                                    {parts.value(2), parts.value(3)}, kSeconds);
  session->SetCommandTimeout(kSeconds);
  return session;
}

struct ServerTable {
  const char* name;
  bool countsKeys = false;  ///< the server gives the keys, in the first column
};
constexpr ServerTable kTables[] = {{"Campaign Results", true},
                                   {"Send_Journal"},
                                   {"Campaign_Results_Counters"},
                                   {"Campaign_Claims"},
                                   {"Customers"},
                                   {"Customer_Types"},
                                   {"Enquiry_Sources"},
                                   {"Makes"},
                                   {"Vehicles"},
                                   {"Engines"},
                                   {"Services"},
                                   {"Letters", true},
                                   {"SMS", true},
                                   {"Emails", true},
                                   {"_Log", true},
                                   {"_Marketing_Log", true},
                                   {"Marketing_Campaigns_History", true},
                                   {"Marketing_Campaigns", true},
                                   {"_OptionsUser"},
                                   {"_Options"}};

/// Brings a SQL Server's database back to its state after the script. TRUNCATE begins with the first key again.
void EmptyDatabase(Session& session) {
  for (const ServerTable& table : kTables)
    session.Execute(QStringLiteral("TRUNCATE TABLE [%1]").arg(QLatin1String(table.name)));
  session.Execute(QStringLiteral("UPDATE _Keys SET Last_Value = CASE Key_Name WHEN 'TEMP' THEN 0 ELSE 1000 END"));
  session.Execute(QStringLiteral("INSERT INTO _Options (Options_Company) VALUES ('A')"));
}

/// Copies the rows of a table. Keys that the server gives begin with 1.
void CopyRows(Session& from, Session& to, const ServerTable& table) {
  const QString name = QString::fromLatin1(table.name);
  const int first = table.countsKeys ? 1 : 0;
  Recordset rows = Recordset::ReadAll(from.Execute(QStringLiteral("SELECT * FROM [%1] ORDER BY 1").arg(name)));
  QStringList columns;
  for (const Column& column : rows.Columns())
    columns += column.name;
  for (; !rows.Eof(); rows.MoveNext()) {
    std::vector<Value> values;
    for (int i = first; i < static_cast<int>(columns.size()); ++i)
      values.push_back(rows.Field(i));
    to.InsertRow(name, columns.mid(first), values);
  }
}

}  // namespace

ServerUnderTest::ServerUnderTest(EmbeddedEngine& engine)
    : engine_(engine), server_(IsWire() ? std::make_unique<tds::Server>(engine) : nullptr) {
  if (!server_ && IsSqlServer()) EmptyDatabase(*ConnectToSqlServer());
}

ServerUnderTest::~ServerUnderTest() = default;

bool ServerUnderTest::IsWire() {
  return qEnvironmentVariableIsSet("QBX_TEST_WIRE");
}

bool ServerUnderTest::IsSqlServer() {
  return qEnvironmentVariableIsSet("QBX_TEST_SERVER");
}

std::unique_ptr<Session> ServerUnderTest::Connect(const ConnectionTarget& target, const Login& login, int seconds) {
  if (!server_ && IsSqlServer()) return ConnectToSqlServer();
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
  Served(const QString& folder, const Clock& clock) : engine(folder, clock, KeepUpToDate) {}
  EmbeddedEngine engine;
  tds::Server server{engine};
};

ServedFolder::ServedFolder(const QString& folder, const Clock& clock, const QString& database)
    : folder_(folder),
      database_(database.isEmpty() ? QString::fromLatin1(kDatabase) : database),
      clock_(clock),
      served_(ServerUnderTest::IsWire() ? std::make_unique<Served>(folder, clock) : nullptr) {}

ServedFolder::~ServedFolder() = default;

QString ServedFolder::ServerName() const {
  if (served_) return NameOf(served_->server);
  return ServerUnderTest::IsSqlServer() ? NamedServer().value(0) : QString();
}

void ServedFolder::TellPrograms() const {
  if (ServerName().isEmpty()) return;
  const QString registry = folder_ + QStringLiteral("/registry");
  QFile file(registry + QStringLiteral("/machine.reg"));
  const QString login = ServerUnderTest::IsWire() ? QString() : NamedServer().value(2);
  const QByteArray text =
      QStringLiteral(
          "Windows Registry Editor Version 5.00\r\n\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Korvel Manager\\Login]\r\n\"Server\"=\"%1\"\r\n\"SQLLoginUser\"=\"%2\"\r\n")
          .arg(ServerName(), login)
          .toUtf8();
  if (!QDir().mkpath(registry) || !file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
    qFatal("%s: %s", qPrintable(file.fileName()), qPrintable(file.errorString()));
}

void ServedFolder::Fill() const {
  if (served_ || !ServerUnderTest::IsSqlServer()) return;
  const std::unique_ptr<Session> from = ConnectToFile();
  const std::unique_ptr<Session> to = ConnectToSqlServer();
  EmptyDatabase(*to);
  to->Execute(QStringLiteral("DELETE FROM _Options; DELETE FROM _Keys"));
  to->Begin();
  for (const ServerTable& table : kTables)  // triggers count
    if (table.name != std::string_view("Campaign_Results_Counters")) CopyRows(*from, *to, table);
  CopyRows(*from, *to, {"_Keys"});
  const Value version =
      Recordset::ReadAll(from->Execute(QStringLiteral("SELECT Marketing_Version FROM _Version"))).Field(0);
  to->Execute(QStringLiteral("UPDATE _Version SET Marketing_Version = %1").arg(version.ToInt()));
  to->Commit();
}

std::unique_ptr<Session> ServedFolder::Connect() const {
  return !served_ && ServerUnderTest::IsSqlServer() ? ConnectToSqlServer() : ConnectToFile();
}

std::unique_ptr<Session> ServedFolder::ConnectToFile() const {
  std::unique_ptr<Session> session =
      EmbeddedEngine(folder_, clock_, KeepUpToDate).Connect({.server = {}, .database = database_}, {}, kSeconds);
  session->SetCommandTimeout(kSeconds);
  return session;
}

SessionFactory ServedFolder::Wrap(SessionFactory sessions) const {
  if (!served_ && ServerUnderTest::IsSqlServer())
    return [](const ConnectionTarget&, const Login&, int) { return ConnectToSqlServer(); };
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
