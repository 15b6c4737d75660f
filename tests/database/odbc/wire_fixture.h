// A session over the ODBC driver with tds_server, which serves an empty host database.

#pragma once

#include <gtest/gtest.h>

#include "database/odbc/odbc_driver.h"
#include "database/recordset.h"
#include "support/embedded_host.h"
#include "tds_server/server.h"

namespace qbx::test {

struct Wire {
  std::unique_ptr<Session> Connect() { return driver.Connect({ServerName(), QStringLiteral("Garage")}, login, 10); }
  [[nodiscard]] QString ServerName() const { return QStringLiteral("127.0.0.1,%1").arg(server.Port()); }
  /// The number of the error that a call throws; 0: none.
  template <typename Call>
  static int NumberOf(const Call& call) {
    try {
      call();
      return 0;
    } catch (const DatabaseError& error) {
      return error.Number();
    }
  }
  Recordset Read(const char* sql) { return Recordset::ReadAll(session->Execute(QString::fromUtf8(sql))); }
  QString Ask(const char* sql) {
    const Recordset rows = Read(sql);
    return rows.Eof() ? QStringLiteral("no row") : rows.Field(0).ToText();
  }
  void Plan(tds::FaultKind kind, tds::FaultMoment moment, const char* match) {
    server.PlannedFaults().Add({.kind = kind, .moment = moment, .match = QString::fromLatin1(match)});
  }

  EmbeddedHost host;
  tds::Server server{host.engine};
  OdbcDriver driver;
  Login login{QStringLiteral("sa"), QString()};
  std::unique_ptr<Session> session = Connect();
};

}  // namespace qbx::test
