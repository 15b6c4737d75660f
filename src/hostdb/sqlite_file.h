// The little of SQLite that making a database needs: a file that closes itself and a prepared statement that is filled
// by position.

#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <stdexcept>
#include <string_view>

#include "platform/clock.h"

struct sqlite3;
struct sqlite3_stmt;

namespace qbx {

/// Thrown inside this folder when SQLite refuses something; caught where the folder's functions return.
class SqliteFailure : public std::runtime_error {
 public:
  explicit SqliteFailure(sqlite3* database);

  /// Whether it failed only since another connection uses the file.
  [[nodiscard]] bool IsBusy() const;
  /// Whether it failed only since a table or a column is not there.
  [[nodiscard]] bool IsMissingObject() const;

 private:
  int code_;
};

/// An open database file, with the functions and the collation that the engine registers on its own connections: an
/// index has to be built with the order it will be read in.
class SqliteFile {
 public:
  /// Opens a file, making it when it is not there.
  /// \throws SqliteFailure
  explicit SqliteFile(const QString& path);
  ~SqliteFile();
  SqliteFile(const SqliteFile&) = delete;
  SqliteFile& operator=(const SqliteFile&) = delete;

  [[nodiscard]] sqlite3* Handle() const { return database_; }

 private:
  SystemClock clock_;
  sqlite3* database_ = nullptr;
};

/// Runs statements that return nothing of interest.
/// \throws SqliteFailure
void ExecuteSql(sqlite3* database, const char* sql);

/// A prepared statement that is bound from the left and run over and over.
///
///   SqliteStatement insert(database, "INSERT INTO Makes VALUES (?, ?, ?)");
///   insert.Add(7).Add("Audi").Add(0).Run();
class SqliteStatement {
 public:
  SqliteStatement(sqlite3* database, const char* sql);  ///< \throws SqliteFailure
  ~SqliteStatement();
  SqliteStatement(const SqliteStatement&) = delete;
  SqliteStatement& operator=(const SqliteStatement&) = delete;

  SqliteStatement& Add(qint64 value);
  SqliteStatement& Add(double value);
  SqliteStatement& Add(std::string_view utf8);  ///< is copied
  SqliteStatement& AddNull();

  /// Runs it to its end and makes it ready for the next values.
  /// \throws SqliteFailure
  void Run();
  /// Steps to a row.
  /// \return false at the end, ready for the next values.
  /// \throws SqliteFailure
  bool Step();
  [[nodiscard]] qint64 IntegerAt(int column) const;
  [[nodiscard]] QByteArray TextAt(int column) const;

 private:
  sqlite3* database_;
  sqlite3_stmt* statement_ = nullptr;
  int next_ = 1;
};

}  // namespace qbx
