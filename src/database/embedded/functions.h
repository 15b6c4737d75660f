// The SQL functions and the collation that the embedded databases rely on.

#pragma once

#include "platform/clock.h"

struct sqlite3;

namespace qbx {

/// Registers functions and a collation on a connection. Whoever creates or opens a database file without the engine
/// must call this first.
/// - the collation NOCASE: without regard to case for all of Unicode (by folded code point) and to blanks at the end;
/// - `GetDate()`, `GetUtcDate()`: local time and UTC of the clock as text "yyyy-mm-dd hh:mm:ss.zzz";
/// - `Len(text)`: UTF-16 units without trailing blanks;
/// - `CharIndex(find, text [, start])`: position from 1, without regard to case; 0: not found;
/// - `Lower(text)`, `Upper(text)` for all of Unicode;
/// - `RaiseError(number, message)`: makes the statement fail with that error of the server (the text of SQLite's error
///   is "#number#message").
/// \param clock  must outlive the connection
void RegisterFunctions(sqlite3* database, const Clock& clock);

}  // namespace qbx
