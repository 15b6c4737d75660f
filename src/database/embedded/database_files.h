// The database files of a program folder, as the server's catalogue.

#pragma once

#include <QString>

struct sqlite3;

namespace qbx {

/// Finds databases by name and reads and sets their status. Stateless: the folder and the files are the truth.
class DatabaseFiles {
 public:
  explicit DatabaseFiles(const QString& folder);

  [[nodiscard]] const QString& Folder() const { return folder_; }  ///< with a trailing separator
  [[nodiscard]] static bool IsMaster(const QString& database);

  /// Whether there can be a database of that name: it names a file of the folder and can stand in a connection string and a statement.
  [[nodiscard]] static bool CanBeNamed(const QString& database);

  /// The file of a database, found without regard to case; empty when there is none.
  [[nodiscard]] QString FileOf(const QString& database) const;
  /// "ONLINE" or "OFFLINE"; "SUSPECT" for a file that cannot be read as a database; empty for a database that does not
  /// exist.
  [[nodiscard]] QString Status(const QString& database) const;
  /// \throws DatabaseError (5011) when there is no such database, or with what is wrong with its file
  void SetStatus(const QString& database, const QString& status) const;
  /// Whether a login is accepted: by any of the databases that have a table of logins, or because none has.
  [[nodiscard]] bool AcceptsLogin(const QString& user, const QString& password) const;

 private:
  QString folder_;
};

enum class LoginCheck { kNoLogins, kAccepted, kRefused };
/// Whether the database accepts a login: no table `_Logins`, or a row with this pair.
/// \param database  an open connection
/// \throws DatabaseError when that cannot be read
[[nodiscard]] LoginCheck CheckLogin(sqlite3* database, const QString& user, const QString& password);

/// The status kept in an open database, "ONLINE" when it keeps none.
[[nodiscard]] QString StoredStatus(sqlite3* database);

}  // namespace qbx
