// The views, triggers and procedures of a database: those that the program brings, and the memory of what it installed.

#pragma once

#include <QByteArray>
#include <vector>

struct sqlite3;

namespace qbx {

/// A view or trigger as it stands in a database.
struct SchemaObject {
  QByteArray kind;  ///< "view" or "trigger"
  QByteArray name;
  QByteArray table;  ///< that a trigger belongs to
  QByteArray text;   ///< the whole statement that makes it
};

/// Reads every view and trigger and drops them, so that tables can be rebuilt without one being lost or firing.
/// \return views first
/// \throws SqliteFailure
[[nodiscard]] std::vector<SchemaObject> TakeObjectsAside(sqlite3* database);

/// Makes the views and triggers again that were taken aside, with those of the program renewed: an object whose text in this program differs
/// from the one that `_Installed` remembers gets the new text, one that the program does not bring any more goes, and every other stays as
/// it was found, changed or missing. The same for the procedures in `_Procedures`. A trigger whose table is gone goes, too.
/// \param number  kept with each procedure that is installed
/// \throws SqliteFailure
void PutObjectsBack(sqlite3* database, std::vector<SchemaObject> aside, int number);

}  // namespace qbx
