#include "host_data.h"

#include <sqlite3.h>

#include "database/embedded/functions.h"
#include "database/recordset.h"
#include "scenario_error.h"
#include "sqlite/sqlite_file.h"
#include "support/wire/server_words.h"

namespace qbx::scenario {
namespace {

constexpr int kBusyMilliseconds = 5000;

[[noreturn]] void Refuse(const SqliteFailure& failure, const QString& sql) {
  throw ScenarioError(QStringLiteral("%1, in: %2").arg(QString::fromUtf8(failure.what()), sql));
}

SqliteFile Open(const QString& path, const Clock& clock) {
  try {
    SqliteFile file(path, SqliteMode::kExisting);
    sqlite3_busy_timeout(file.Handle(), kBusyMilliseconds);
    RegisterFunctions(file.Handle(), clock);
    return file;
  } catch (const SqliteFailure&) {
    throw ScenarioError(QStringLiteral("There is no database %1.").arg(path));
  }
}

QVariant ValueAt(const SqliteStatement& statement, int column) {
  switch (sqlite3_column_type(statement.Handle(), column)) {
    case SQLITE_NULL:
      return QVariant::fromValue(nullptr);
    case SQLITE_INTEGER:
      return QVariant(static_cast<double>(statement.IntegerAt(column)));
    case SQLITE_FLOAT:
      return QVariant(statement.DoubleAt(column));
    default:
      return QString::fromUtf8(statement.TextAt(column));
  }
}

// As the embedded database stores it.
QVariant ValueAt(const Recordset& rows, int column) {
  const Value value = rows.Field(column);
  switch (value.Type()) {
    case ValueType::kNull:
      return QVariant::fromValue(nullptr);
    case ValueType::kText:
      return value.ToText();
    case ValueType::kDateTime:
      return value.ToDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz"));
    default:
      return value.ToDouble();
  }
}

// The rows of the last result.
QVariantList RowsOf(Session& server, const QString& sql) {
  QVariantList maps;
  try {
    for (const QString& batch : qbx::test::InServerWords(sql)) {
      std::unique_ptr<RowSource> result = server.Execute(batch);
      if (result == nullptr) continue;
      Recordset rows = Recordset::ReadAll(std::move(result));
      for (maps.clear(); !rows.Eof(); rows.MoveNext()) {
        QVariantMap row;
        int column = 0;
        for (const Column& each : rows.Columns())
          row.insert(each.name, ValueAt(rows, column++));
        maps += QVariant(row);
      }
    }
  } catch (const DatabaseError& error) {
    throw ScenarioError(QStringLiteral("%1, in: %2").arg(QString::fromUtf8(error.what()), sql));
  }
  return maps;
}

}  // namespace

QVariantList HostData::Select(const QString& sql) const {
  if (server_ != nullptr) return RowsOf(*server_, sql);
  const SqliteFile database = Open(file_, clock_);
  QVariantList rows;
  try {
    SqliteStatement statement(database.Handle(), sql.toStdString());
    while (statement.Step()) {
      QVariantMap row;
      for (int column = 0; column < statement.ColumnCount(); ++column)
        row.insert(QString::fromUtf8(sqlite3_column_name(statement.Handle(), column)), ValueAt(statement, column));
      rows += QVariant(row);
    }
  } catch (const SqliteFailure& failure) {
    Refuse(failure, sql);
  }
  return rows;
}

int HostData::Execute(const QString& sql) const {
  if (server_ != nullptr)
    return RowsOf(*server_, sql + QStringLiteral("; SELECT @@ROWCOUNT AS n")).value(0).toMap().value("n").toInt();
  const SqliteFile database = Open(file_, clock_);
  try {
    ExecuteSql(database.Handle(), sql.toUtf8().constData());
  } catch (const SqliteFailure& failure) {
    Refuse(failure, sql);
  }
  return sqlite3_changes(database.Handle());
}

std::shared_ptr<void> HostData::LockFile() const {
  auto database = std::make_shared<SqliteFile>(Open(file_, clock_));
  ExecuteSql(database->Handle(), "BEGIN EXCLUSIVE");
  return database;
}

void HostData::EndOtherSessions() const {
  const QVariantList others = Select(QStringLiteral(
      "SELECT session_id FROM sys.dm_exec_sessions WHERE database_id = DB_ID() AND session_id <> @@SPID"));
  for (const QVariant& other : others)
    server_->Execute(QStringLiteral("KILL %1").arg(other.toMap().value("session_id").toInt()));
}

}  // namespace qbx::scenario
