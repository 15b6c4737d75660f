// The server for tests that need a database.

#pragma once

#include <memory>

#include "database/embedded/engine.h"
#include "database/odbc/odbc_driver.h"

namespace qbx::tds {
class Server;
}  // namespace qbx::tds

namespace qbx::test {

/// Makes sessions with an engine. With QBX_TEST_WIRE in the environment, the sessions use ODBC and tds_server, so that
/// the same tests run through the wire. With QBX_TEST_SERVER="server,port database login password", the sessions use a
/// SQL Server instead of the engine. Its database must have been set up with the script. Each test empties it first.
class ServerUnderTest {
 public:
  /// \param engine  must outlive this object
  explicit ServerUnderTest(EmbeddedEngine& engine);
  ~ServerUnderTest();

  [[nodiscard]] static bool IsWire();
  [[nodiscard]] static bool IsSqlServer();

  [[nodiscard]] std::unique_ptr<Session> Connect(const ConnectionTarget& target, const Login& login, int seconds);
  /// `Connect` as a function for a Connection. This object must outlive the Connection.
  [[nodiscard]] SessionFactory Factory();
  /// Ends all open sessions, as a restarted server does.
  void BreakSessions();

 private:
  EmbeddedEngine& engine_;
  std::unique_ptr<tds::Server> server_;
  OdbcDriver driver_;
};

/// Serves a program folder with tds_server when the tests run through the wire; otherwise it does nothing. For tests of
/// programs, which find their server by its name. With QBX_TEST_SERVER that SQL Server takes the place of the folder's
/// database: its database has the name that the program looks for, and its login has no password.
class ServedFolder {
 public:
  /// \param clock     must outlive this object
  /// \param database  name of the folder's database, without its ending; empty: that of a garage
  ServedFolder(const QString& folder, const Clock& clock, const QString& database = {});
  ~ServedFolder();

  /// The server's name for the programs; empty for the embedded engine.
  [[nodiscard]] QString ServerName() const;
  /// Writes the server's name into the registry of the programs that work in this folder.
  void TellPrograms() const;
  /// Copies what the folder's database holds to the SQL Server, if there is one.
  void Fill() const;
  /// A session beside the programs: of the folder's database, or of the SQL Server.
  [[nodiscard]] std::unique_ptr<Session> Connect() const;
  [[nodiscard]] std::unique_ptr<Session> ConnectToFile() const;
  /// Makes a factory that connects to this server in place of the embedded engine. This object must outlive it.
  [[nodiscard]] SessionFactory Wrap(SessionFactory sessions) const;
  /// Ends all open sessions, as a restarted server does.
  void BreakSessions();

 private:
  struct Served;

  QString folder_;
  QString database_;
  const Clock& clock_;
  std::unique_ptr<Served> served_;
};

}  // namespace qbx::test
