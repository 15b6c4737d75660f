// What a command prints on stdout: a table or lines for people, JSON for scripts.

#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QStringList>

#include "database/recordset.h"

namespace qbx::ctl {

/// The JSON value of a database value: numbers and booleans as they are, NULL as null, dates in ISO 8601.
[[nodiscard]] QJsonValue ToJson(const Value& value);
/// The current row under the names of its columns.
[[nodiscard]] QJsonObject RowToJson(const Recordset& rows);
/// All rows of a client-side recordset.
[[nodiscard]] QJsonArray RowsToJson(Recordset& rows);

/// Whether a JSON value was printed. Each call of the program prints one.
[[nodiscard]] bool JsonPrinted();

/// "1 page", "3 pages".
[[nodiscard]] QString Counted(int count, const char* noun);

void PrintLine(const QString& line);
/// Prints a line on stderr, beside the result: a warning, or what was done in another way than the caller asked for.
void PrintNote(const QString& line);
void PrintJson(const QJsonObject& object);
void PrintJson(const QJsonArray& array);

/// Prints objects as an aligned table with the given columns as headings. Line breaks become blanks, long texts are
/// cut.
void PrintTable(const QJsonArray& rows, const QStringList& columns);

}  // namespace qbx::ctl
