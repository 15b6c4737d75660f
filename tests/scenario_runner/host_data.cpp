#include "host_data.h"

#include <sqlite3.h>

#include "database/embedded/functions.h"
#include "scenario_error.h"
#include "sqlite/sqlite_file.h"

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

}  // namespace

QVariantList HostData::Select(const QString& sql) const {
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
  const SqliteFile database = Open(file_, clock_);
  try {
    ExecuteSql(database.Handle(), sql.toUtf8().constData());
  } catch (const SqliteFailure& failure) {
    Refuse(failure, sql);
  }
  return sqlite3_changes(database.Handle());
}

}  // namespace qbx::scenario
