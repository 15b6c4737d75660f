// The one place from which the tests of a database take their server.

#pragma once

#include <memory>

#include "database/embedded/engine.h"
#include "database/odbc/odbc_driver.h"

namespace qbx::tds {
class Server;
}  // namespace qbx::tds

namespace qbx::test {

/// Gives sessions of an engine: its own, or, where the environment has QBX_TEST_WIRE, sessions over ODBC with the small
/// server in front of it, so that the same tests run through the wire. By hand, with QBX_TEST_SERVER="server,port
/// database login password", it is a SQL Server, in whose database the script was run and which every test empties
/// first.
class ServerUnderTest {
 public:
  /// \param engine  outlives this
  explicit ServerUnderTest(EmbeddedEngine& engine);
  ~ServerUnderTest();

  [[nodiscard]] static bool IsWire();
  [[nodiscard]] static bool IsSqlServer();

  [[nodiscard]] std::unique_ptr<Session> Connect(const ConnectionTarget& target, const Login& login, int seconds);
  /// `Connect` as a Connection takes it; this must outlive it.
  [[nodiscard]] SessionFactory Factory();
  /// Ends every open session as a restarted server would.
  void BreakSessions();

 private:
  EmbeddedEngine& engine_;
  std::unique_ptr<tds::Server> server_;
  OdbcDriver driver_;
};

/// The small server in front of a program folder, where the tests run through the wire; otherwise nothing. For programs
/// that find their server by its name.
class ServedFolder {
 public:
  /// \param clock  outlives this
  ServedFolder(const QString& folder, const Clock& clock);
  ~ServedFolder();

  /// What the program is to be told as its server; empty for the embedded engine.
  [[nodiscard]] QString ServerName() const;
  /// Tells programs that work in this folder, by their registry.
  void TellPrograms() const;
  /// The factory of a program that was told nothing, brought to this server; the folder must outlive it.
  [[nodiscard]] SessionFactory Wrap(SessionFactory sessions) const;
  /// Ends every open session as a restarted server would.
  void BreakSessions();

 private:
  struct Served;
  std::unique_ptr<Served> served_;
};

}  // namespace qbx::test
