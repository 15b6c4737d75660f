// Prepared statements that are kept for reuse, and the lease of one for a run.

#pragma once

#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "database/embedded/sqlite_database.h"
#include "database/session.h"

namespace qbx {

/// How the stored value of a column is handed over.
struct ColumnReading {
  ValueType type = ValueType::kNull;  ///< kNull: as it is stored
  quint8 scale = 0;
};

/// One prepared statement, with the description of its result.
class PreparedStatement {
 public:
  /// Prepares the first statement of `sql`.
  /// \throws DatabaseError
  PreparedStatement(std::shared_ptr<SqliteDatabase> database, std::string_view sql);
  PreparedStatement(const PreparedStatement&) = delete;
  PreparedStatement& operator=(const PreparedStatement&) = delete;

  [[nodiscard]] sqlite3_stmt* Handle() const { return statement_.Handle(); }
  [[nodiscard]] SqliteDatabase& Database() const { return *database_; }
  [[nodiscard]] const std::shared_ptr<SqliteDatabase>& SharedDatabase() const { return database_; }
  [[nodiscard]] const std::string& Sql() const { return sql_; }
  [[nodiscard]] bool HasColumns() const { return columnCount_ > 0; }
  [[nodiscard]] bool IsReadOnly() const { return readOnly_; }

  /// Described once, and again after the schema changed.
  [[nodiscard]] const std::vector<Column>& Columns();
  [[nodiscard]] const std::vector<ColumnReading>& Readings();

 private:
  friend class StatementLease;
  void Describe();

  std::shared_ptr<SqliteDatabase> database_;
  std::string sql_;
  SqliteStatement statement_;
  int columnCount_ = 0;
  bool readOnly_ = false;
  bool inUse_ = false;
  int describedAt_ = -1;  // how often it was prepared again
  std::vector<Column> columns_;
  std::vector<ColumnReading> readings_;
};

/// The use of a prepared statement for one run. Its end resets the statement. While a statement is in use, a second
/// lease prepares a copy.
class StatementLease {
 public:
  explicit StatementLease(std::shared_ptr<PreparedStatement> statement);
  ~StatementLease();
  StatementLease(StatementLease&&) noexcept = default;
  StatementLease& operator=(StatementLease&&) = delete;

  [[nodiscard]] PreparedStatement& operator*() const { return *statement_; }
  [[nodiscard]] PreparedStatement* operator->() const { return statement_.get(); }

  // Binding by position from 1.
  void BindNull(int index);
  void BindInt(int index, qint64 value);
  void BindDouble(int index, double value);
  void BindText(int index, std::string_view utf8);  ///< copied
  void Bind(int index, const Value& value);

  /// \return true at a row, false at the end
  /// \throws DatabaseError
  bool Step();
  /// Steps to the end and discards the rows.
  void Finish() {
    while (Step()) {
    }
  }

 private:
  std::shared_ptr<PreparedStatement> statement_;
};

/// The statements that were used last, by their text.
class StatementCache {
 public:
  explicit StatementCache(std::shared_ptr<SqliteDatabase> database) : database_(std::move(database)) {}

  [[nodiscard]] StatementLease Get(std::string_view sql);

 private:
  using Entry = std::shared_ptr<PreparedStatement>;
  std::shared_ptr<SqliteDatabase> database_;
  std::list<Entry> used_;  // the statement used last comes first
  std::unordered_map<std::string_view, std::list<Entry>::iterator> bySql_;
};

}  // namespace qbx
