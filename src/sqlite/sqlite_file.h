// Owners of SQLite's handles: a database file, a prepared statement, and the exception for failures.

#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <stdexcept>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace qbx {

/// Thrown when SQLite reports an error. The text is SQLite's.
class SqliteFailure : public std::runtime_error {
 public:
  /// The last failure of a connection. A null connection means that there was no memory to make one.
  explicit SqliteFailure(sqlite3* database);
  /// The failure with the code that a call returned.
  SqliteFailure(sqlite3* database, int code);

  /// SQLite's extended result code.
  [[nodiscard]] int Code() const { return code_; }
  /// Whether another connection that uses the file caused the failure.
  [[nodiscard]] bool IsBusy() const;
  /// Whether a missing table or column caused the failure.
  [[nodiscard]] bool IsMissingObject() const;

 private:
  int code_;
};

enum class SqliteMode {
  kCreate,    ///< makes the file when it is missing
  kExisting,  ///< reads and writes an existing file
  kReadOnly
};

/// An open database file, or ":memory:".
class SqliteFile {
 public:
  /// \throws SqliteFailure
  SqliteFile(const QString& path, SqliteMode mode);

  [[nodiscard]] sqlite3* Handle() const { return database_.get(); }

 private:
  struct Close {
    void operator()(sqlite3* database) const;
  };
  std::unique_ptr<sqlite3, Close> database_;
};

/// Runs statements and drops their results.
/// \throws SqliteFailure
void ExecuteSql(sqlite3* database, const char* sql);
/// Runs statements whose failure is expected or cannot be helped, such as a rollback. \return SQLite's code
int TryExecuteSql(sqlite3* database, const char* sql) noexcept;

/// A prepared statement. Values are bound from the left; it can run many times.
///
///   SqliteStatement insert(database, "INSERT INTO Makes VALUES (?, ?, ?)");
///   insert.Add(7).Add("Audi").Add(0).Run();
class SqliteStatement {
 public:
  /// Prepares the first statement of `sql`.
  /// \param rest  receives the text after the first statement
  /// \throws SqliteFailure
  SqliteStatement(sqlite3* database, std::string_view sql, std::string_view* rest = nullptr);

  SqliteStatement& Add(qint64 value);
  SqliteStatement& Add(double value);
  SqliteStatement& Add(std::string_view utf8);
  SqliteStatement& AddNull();

  // Positions count from 1.
  void Bind(int index, qint64 value);
  void Bind(int index, double value);
  void Bind(int index, std::string_view utf8);  ///< the text is copied
  void BindNull(int index);

  /// Runs the statement to its end and resets it for the next values.
  /// \throws SqliteFailure
  void Run();
  /// Steps to the next row.
  /// \return false at the end; the statement is then reset for the next values
  /// \throws SqliteFailure
  bool Step();
  /// Steps once; neither throws nor resets. \return SQLite's code
  int StepOnly() noexcept;
  /// Makes the statement ready to run again with the same values.
  void Reset() noexcept;
  /// Forgets the values.
  void ClearBindings() noexcept;

  [[nodiscard]] int ColumnCount() const;
  [[nodiscard]] bool IsNullAt(int column) const;
  [[nodiscard]] qint64 IntegerAt(int column) const;
  [[nodiscard]] double DoubleAt(int column) const;
  [[nodiscard]] QByteArray TextAt(int column) const;
  /// SQLite's own handle, for calls that this class lacks. Null when the text held no statement.
  [[nodiscard]] sqlite3_stmt* Handle() const { return statement_.get(); }

 private:
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const;
  };
  sqlite3* database_;
  std::unique_ptr<sqlite3_stmt, Finalize> statement_;
  int next_ = 1;
};

}  // namespace qbx
