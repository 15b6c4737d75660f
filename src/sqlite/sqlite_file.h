// SQLite with owners: a database file that closes itself, a prepared statement, a failure that is thrown.

#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <stdexcept>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace qbx {

/// Thrown when SQLite refuses something; the text is SQLite's.
class SqliteFailure : public std::runtime_error {
 public:
  /// The last failure of a connection. Without one there was no memory for it.
  explicit SqliteFailure(sqlite3* database);
  /// The same, by the code that a call returned.
  SqliteFailure(sqlite3* database, int code);

  /// The extended result code.
  [[nodiscard]] int Code() const { return code_; }
  /// Whether it failed only since another connection uses the file.
  [[nodiscard]] bool IsBusy() const;
  /// Whether it failed only since a table or a column is not there.
  [[nodiscard]] bool IsMissingObject() const;

 private:
  int code_;
};

enum class SqliteMode {
  kCreate,    ///< makes the file when it is not there
  kExisting,  ///< reads and writes a file that exists
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

/// Runs statements that return nothing of interest.
/// \throws SqliteFailure
void ExecuteSql(sqlite3* database, const char* sql);
/// The same where a failure is expected or cannot be helped, as in undoing. \return SQLite's code
int TryExecuteSql(sqlite3* database, const char* sql) noexcept;

/// A prepared statement that is bound from the left and run over and over.
///
///   SqliteStatement insert(database, "INSERT INTO Makes VALUES (?, ?, ?)");
///   insert.Add(7).Add("Audi").Add(0).Run();
class SqliteStatement {
 public:
  /// Prepares the first statement of `sql`.
  /// \param rest  is set to what stands behind it
  /// \throws SqliteFailure
  SqliteStatement(sqlite3* database, std::string_view sql, std::string_view* rest = nullptr);

  SqliteStatement& Add(qint64 value);
  SqliteStatement& Add(double value);
  SqliteStatement& Add(std::string_view utf8);
  SqliteStatement& AddNull();

  // By position from 1.
  void Bind(int index, qint64 value);
  void Bind(int index, double value);
  void Bind(int index, std::string_view utf8);  ///< is copied
  void BindNull(int index);

  /// Runs it to its end and makes it ready for the next values.
  /// \throws SqliteFailure
  void Run();
  /// Steps to a row.
  /// \return false at the end, ready for the next values.
  /// \throws SqliteFailure
  bool Step();
  /// Steps once and neither throws nor resets. \return SQLite's code
  int StepOnly() noexcept;
  /// Makes it ready to run again with the same values.
  void Reset() noexcept;
  /// Forgets the values.
  void ClearBindings() noexcept;

  [[nodiscard]] int ColumnCount() const;
  [[nodiscard]] bool IsNullAt(int column) const;
  [[nodiscard]] qint64 IntegerAt(int column) const;
  [[nodiscard]] double DoubleAt(int column) const;
  [[nodiscard]] QByteArray TextAt(int column) const;
  /// For what is asked of a statement beside running it. Null when there was no statement in the text.
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
