#include "database/embedded/prepared.h"

#include <sqlite3.h>

namespace qbx {
namespace {

constexpr std::size_t kKeptStatements = 64;

/// How a column is read, by its declared type ("nvarchar(20)", "decimal(10,2)").
ColumnReading ReadingOf(const char* declared) {
  if (declared == nullptr) return {};
  const QString type = QString::fromUtf8(declared).trimmed().toLower();
  const QString word = type.section(QLatin1Char('('), 0, 0).trimmed();
  if (word == QLatin1String("bit")) return {ValueType::kBool};
  if (word.endsWith(QLatin1String("int")) || word == QLatin1String("integer")) return {ValueType::kInt};
  if (word == QLatin1String("float") || word == QLatin1String("real")) return {ValueType::kDouble};
  if (word == QLatin1String("money")) return {ValueType::kDecimal, 4};
  if (word == QLatin1String("decimal") || word == QLatin1String("numeric")) {
    const int scale = type.section(QLatin1Char(','), 1).section(QLatin1Char(')'), 0, 0).trimmed().toInt();
    return {ValueType::kDecimal, static_cast<quint8>(qBound(0, scale, 15))};
  }
  if (word.contains(QLatin1String("datetime")) || word == QLatin1String("date")) return {ValueType::kDateTime};
  if (word.contains(QLatin1String("char")) || word == QLatin1String("text")) return {ValueType::kText};
  return {};
}

int DeclaredSize(const char* declared) {
  const QString type = QString::fromUtf8(declared);
  return type.section(QLatin1Char('('), 1)
      .section(QLatin1Char(')'), 0, 0)
      .section(QLatin1Char(','), 0, 0)
      .trimmed()
      .toInt();
}

/// Number of characters of a date of the declared type as text.
int DatePrecision(const char* declared) {
  const QString type = QString::fromUtf8(declared).trimmed().toLower();
  return type == QLatin1String("date") ? 10 : type == QLatin1String("smalldatetime") ? 16 : 23;
}

SqliteStatement PrepareSql(const SqliteDatabase& database, const std::string& sql) {
  try {
    return SqliteStatement(database.Handle(), sql);
  } catch (const SqliteFailure& failure) {
    throw database.Error(failure, QString::fromStdString(sql));
  }
}

}  // namespace

PreparedStatement::PreparedStatement(std::shared_ptr<SqliteDatabase> database, std::string_view sql)
    : database_(std::move(database)), sql_(sql), statement_(PrepareSql(*database_, sql_)) {
  columnCount_ = statement_.ColumnCount();
  readOnly_ = sqlite3_stmt_readonly(Handle()) != 0;
}

const std::vector<Column>& PreparedStatement::Columns() {
  Describe();
  return columns_;
}

const std::vector<ColumnReading>& PreparedStatement::Readings() {
  Describe();
  return readings_;
}

void PreparedStatement::Describe() {
  const int prepared = sqlite3_stmt_status(Handle(), SQLITE_STMTSTATUS_REPREPARE, 0);
  if (prepared == describedAt_) return;
  describedAt_ = prepared;
  columnCount_ = statement_.ColumnCount();
  columns_.clear();
  readings_.clear();
  for (int i = 0; i < columnCount_; ++i) {
    const char* declared = sqlite3_column_decltype(Handle(), i);
    const ColumnReading reading = ReadingOf(declared);
    const char* table = sqlite3_column_table_name(Handle(), i);
    Column column;
    column.name = QString::fromUtf8(sqlite3_column_name(Handle(), i));
    column.type = reading.type == ValueType::kNull ? ValueType::kText : reading.type;
    if (reading.type == ValueType::kText) column.size = DeclaredSize(declared);
    if (reading.type == ValueType::kDateTime) column.precision = DatePrecision(declared);
    if (reading.type == ValueType::kDecimal) {
      column.precision = DeclaredSize(declared);
      column.scale = reading.scale;
    }
    if (table != nullptr) column.baseTable = QString::fromUtf8(table);
    columns_.push_back(std::move(column));
    readings_.push_back(reading);
  }
}

StatementLease::StatementLease(std::shared_ptr<PreparedStatement> statement) : statement_(std::move(statement)) {
  if (statement_->inUse_)
    statement_ = std::make_shared<PreparedStatement>(statement_->SharedDatabase(), statement_->Sql());
  statement_->inUse_ = true;
}

StatementLease::~StatementLease() {
  if (!statement_) return;
  statement_->statement_.Reset();
  statement_->statement_.ClearBindings();
  statement_->inUse_ = false;
}

void StatementLease::BindNull(int index) {
  statement_->statement_.BindNull(index);
}
void StatementLease::BindInt(int index, qint64 value) {
  statement_->statement_.Bind(index, value);
}
void StatementLease::BindDouble(int index, double value) {
  statement_->statement_.Bind(index, value);
}
void StatementLease::BindText(int index, std::string_view utf8) {
  statement_->statement_.Bind(index, utf8);
}

void StatementLease::Bind(int index, const Value& value) {
  switch (value.Type()) {
    case ValueType::kNull:
      return BindNull(index);
    case ValueType::kBool:
    case ValueType::kInt:
      return BindInt(index, value.ToInt());
    case ValueType::kDouble:
    case ValueType::kDecimal:
      return BindDouble(index, value.ToDouble());
    case ValueType::kText: {
      const QByteArray utf8 = value.ToText().toUtf8();
      return BindText(index, {utf8.constData(), static_cast<std::size_t>(utf8.size())});
    }
    case ValueType::kDateTime: {
      const QDateTime when = value.ToDateTime();
      const bool whole = when.time().msec() == 0;
      const QByteArray text =
          when.toString(whole ? QStringLiteral("yyyy-MM-dd HH:mm:ss") : QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz"))
              .toLatin1();
      return when.isValid() ? BindText(index, {text.constData(), static_cast<std::size_t>(text.size())})
                            : BindNull(index);
    }
  }
}

bool StatementLease::Step() {
  statement_->Database().ThrowIfInterrupted();
  const int code = statement_->statement_.StepOnly();
  if (code == SQLITE_ROW) return true;
  if (code == SQLITE_DONE) return false;
  statement_->Database().Fail(code, QString::fromStdString(statement_->Sql()));
}

StatementLease StatementCache::Get(std::string_view sql) {
  if (const auto found = bySql_.find(sql); found != bySql_.end()) {
    used_.splice(used_.begin(), used_, found->second);
    return StatementLease(used_.front());
  }
  used_.push_front(std::make_shared<PreparedStatement>(database_, sql));
  bySql_.emplace(used_.front()->Sql(), used_.begin());
  if (used_.size() > kKeptStatements) {
    bySql_.erase(used_.back()->Sql());
    used_.pop_back();
  }
  return StatementLease(used_.front());
}

}  // namespace qbx
