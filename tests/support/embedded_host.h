// An empty host database with the real engine and the real statement routines. A test folder that includes this links
// qbx_hostdb and qbx_test_wire.

#pragma once

#include <gtest/gtest.h>

#include "database/embedded/engine.h"
#include "database/statements.h"
#include "hostdb/database_upgrade.h"
#include "hostdb/host_database.h"
#include "support/test_services.h"
#include "support/wire/server_under_test.h"
#include "support/wire/server_words.h"

namespace qbx::test {

/// A connection to a new host database, as user "TESTER". `Run`, `Ask` and `Rows` use the connection directly, and fail
/// the test after an error.
struct EmbeddedHost : TestServices {
  EmbeddedHost() {
    context.user = "TESTER";
    context.DatabaseVersion = kHostSchemaVersion;
    errors.SetEventWriter([this](int type, int table, const QString& key, const QString& details) {
      events.LogEvent(type, table, key, details);
    });
    const HostDatabaseProblem problem = CreateHostDatabase(folder.File("Garage.db"), ExistingFile::kRefuse);
    if (problem) ADD_FAILURE() << problem->toStdString();
    try {
      connection.Open("Provider=SQLOLEDB;Data Source=;Initial Catalog=Garage;", {"sa", QString()});
    } catch (const DatabaseError& error) {
      ADD_FAILURE() << error.what();
    }
  }

  /// Runs a batch and returns the rows of its last result.
  Recordset Run(const QString& sql) {
    try {
      Recordset rows;
      for (const QString& batch : ServerUnderTest::IsSqlServer() ? InServerWords(sql) : QStringList(sql))
        rows = Recordset::ReadAll(connection.Driver().Execute(batch));
      return rows;
    } catch (const DatabaseError& error) {
      ADD_FAILURE() << error.what() << " in: " << sql.toStdString();
      return {};
    }
  }
  /// The first field of the first row.
  Value Ask(const QString& sql) {
    const Recordset rows = Run(sql);
    return rows.Eof() ? Value() : rows.Field(0);
  }
  /// Every row as "a|b|c", NULL as "NULL".
  QStringList Rows(const QString& sql) {
    QStringList lines;
    Recordset rows = Run(sql);
    for (; !rows.Eof(); rows.MoveNext()) {
      QStringList fields;
      for (int i = 0; i < static_cast<int>(rows.Columns().size()); ++i) {
        const Value value = rows.Field(i);
        fields += value.IsNull() ? "NULL" : value.ToText();
      }
      lines += fields.join(QLatin1Char('|'));
    }
    return lines;
  }

  EmbeddedEngine engine{folder.Path(), clock, KeepUpToDate};
  ServerUnderTest server{engine};
  Connection connection{server.Factory()};
  EventContext context;
  EventLog events{connection, context, log};
  LastError lastError;
  ErrorInterpretation interpretation{context, events, lastError, diagnostics};
  Statements statements{connection, interpretation, events, lastError, diagnostics};
};

}  // namespace qbx::test
