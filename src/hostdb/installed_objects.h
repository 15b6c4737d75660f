// The views, triggers and procedures of a database: how the program's own are installed, and which texts it installed
// last.

#pragma once

#include <QByteArray>
#include <vector>

struct sqlite3;

namespace qbx {

/// A view or trigger of a database.
struct SchemaObject {
  QByteArray kind;  ///< "view" or "trigger"
  QByteArray name;
  QByteArray table;  ///< the table of a trigger
  QByteArray text;   ///< the whole statement that makes it
};

/// Reads and drops all views and triggers, so that tables can be rebuilt without losing a view or firing a trigger.
/// \return views first
/// \throws SqliteFailure
[[nodiscard]] std::vector<SchemaObject> TakeObjectsAside(sqlite3* database);

/// Makes the views and triggers again that were taken aside, and renews those of the program. An object gets its new
/// text when the text in this program differs from the one that `_Installed` remembers. An object that the program no
/// longer has is removed. Every other object stays as it was found, changed or missing. The same holds for the
/// procedures in `_Procedures`. A trigger whose table is gone is removed, too.
/// \param number  stored with each procedure that is installed
/// \throws SqliteFailure
void PutObjectsBack(sqlite3* database, std::vector<SchemaObject> aside, int number);

}  // namespace qbx
