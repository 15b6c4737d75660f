// The database files of a program folder, used as the server's catalogue.

#pragma once

#include <QString>

struct sqlite3;

namespace qbx {

/// Finds databases by name, and reads and sets their status. It holds no state of its own: the folder and its files do.
class DatabaseFiles {
 public:
  explicit DatabaseFiles(const QString& folder);

  [[nodiscard]] const QString& Folder() const { return folder_; }  ///< with a trailing separator
  [[nodiscard]] static bool IsMaster(const QString& database);

  /// Whether a database may have the name: it is a valid file name, and can stand in a connection string and in a
  /// statement.
  [[nodiscard]] static bool CanBeNamed(const QString& database);

  /// The file of a database, found without regard to case; empty when there is none.
  [[nodiscard]] QString FileOf(const QString& database) const;
  /// "ONLINE" or "OFFLINE"; "SUSPECT" when the file cannot be read as a database; empty when there is no such database.
  [[nodiscard]] QString Status(const QString& database) const;
  /// \throws DatabaseError when there is no such database (5011), or when its file is damaged
  void SetStatus(const QString& database, const QString& status) const;
  /// Whether a login is accepted: one of the databases with a table of logins has it, or no database has such a table.
  [[nodiscard]] bool AcceptsLogin(const QString& user, const QString& password) const;

 private:
  QString folder_;
};

enum class LoginCheck { kNoLogins, kAccepted, kRefused };
/// Whether the database accepts a login: it has no table `_Logins`, or the table has a row with this user and password.
/// \param database  an open connection
/// \throws DatabaseError when that cannot be read
[[nodiscard]] LoginCheck CheckLogin(sqlite3* database, const QString& user, const QString& password);

/// The status stored in an open database; "ONLINE" when it stores none.
[[nodiscard]] QString StoredStatus(sqlite3* database);

}  // namespace qbx
