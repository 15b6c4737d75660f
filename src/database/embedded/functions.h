// The SQL functions and the collation that the embedded databases rely on.

#pragma once

#include "platform/clock.h"

struct sqlite3;

namespace qbx {

/// Registers on a connection, which whoever creates or opens a database file by other means must do first, too:
/// - the collation NOCASE: without regard to case for all of Unicode (by folded code point);
/// - `GetDate()`: local time of the clock as text "yyyy-mm-dd hh:mm:ss.zzz";
/// - `Len(text)`: UTF-16 units without trailing blanks; `CharIndex(find, text [, start])`: position from 1, without regard to case, 0: none;
/// - `Lower(text)`, `Upper(text)` for all of Unicode;
/// - `RaiseError(number, message)`: makes the statement fail as that error of the server.
/// \param clock  must outlive the connection
void RegisterFunctions(sqlite3* database, const Clock& clock);

/// The number that `RaiseError` was given in the failing statement, 0 when another failure occurred; asked once, then 0.
[[nodiscard]] int TakeRaisedNumber(sqlite3* database);

}  // namespace qbx
