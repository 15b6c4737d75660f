#include "host_data.h"

#include <sqlite3.h>

#include <memory>

#include "database/embedded/functions.h"
#include "scenario_error.h"

namespace qbx::scenario {
namespace {

constexpr int kBusyMilliseconds = 5000;

using Handle = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;

[[noreturn]] void Refuse(sqlite3* database, const QString& sql) {
  throw ScenarioError(QStringLiteral("%1, in: %2").arg(QString::fromUtf8(sqlite3_errmsg(database)), sql));
}

Handle Open(const QString& file, const Clock& clock) {
  sqlite3* raw = nullptr;
  const int result = sqlite3_open_v2(file.toUtf8().constData(), &raw, SQLITE_OPEN_READWRITE, nullptr);
  Handle database(raw, &sqlite3_close);
  if (result != SQLITE_OK) throw ScenarioError(QStringLiteral("There is no database %1.").arg(file));
  sqlite3_busy_timeout(raw, kBusyMilliseconds);
  RegisterFunctions(raw, clock);
  return database;
}

QVariant ValueAt(sqlite3_stmt* statement, int column) {
  switch (sqlite3_column_type(statement, column)) {
    case SQLITE_NULL:
      return QVariant::fromValue(nullptr);
    case SQLITE_INTEGER:
      return QVariant(static_cast<double>(sqlite3_column_int64(statement, column)));
    case SQLITE_FLOAT:
      return QVariant(sqlite3_column_double(statement, column));
    default:
      return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, column)),
                               sqlite3_column_bytes(statement, column));
  }
}

}  // namespace

QVariantList HostData::Select(const QString& sql) const {
  const Handle database = Open(file_, clock_);
  sqlite3_stmt* raw = nullptr;
  if (sqlite3_prepare_v2(database.get(), sql.toUtf8().constData(), -1, &raw, nullptr) != SQLITE_OK)
    Refuse(database.get(), sql);
  const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> statement(raw, &sqlite3_finalize);
  QVariantList rows;
  int step = sqlite3_step(raw);
  for (; step == SQLITE_ROW; step = sqlite3_step(raw)) {
    QVariantMap row;
    for (int column = 0; column < sqlite3_column_count(raw); ++column)
      row.insert(QString::fromUtf8(sqlite3_column_name(raw, column)), ValueAt(raw, column));
    rows += QVariant(row);
  }
  if (step != SQLITE_DONE) Refuse(database.get(), sql);
  return rows;
}

int HostData::Execute(const QString& sql) const {
  const Handle database = Open(file_, clock_);
  if (sqlite3_exec(database.get(), sql.toUtf8().constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
    Refuse(database.get(), sql);
  return sqlite3_changes(database.get());
}

}  // namespace qbx::scenario
