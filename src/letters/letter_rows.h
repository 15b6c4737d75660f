// Who gets a letter, and what stands in it.

#pragma once

#include <QString>

#include "database/connection.h"
#include "database/recordset.h"
#include "letters/letters_table.h"
#include "results/counters.h"

namespace qbx {

/// The rows that letters are made of, in printing order.
/// \param again  those that get nothing but a letter also when they are processed
[[nodiscard]] QString SelectLetterRows(int campaignId, bool again);

/// "Mr Alan Hartley" of a row.
[[nodiscard]] QString NameLine(const Recordset& row);

/// The letter of a row.
[[nodiscard]] LetterRow LetterOf(const Recordset& row, const QString& merged);

/// Why no letter can be delivered to an address (lines separated by CR).
/// \return a sentence for the results log; empty when nothing is wrong
[[nodiscard]] QString AddressProblem(const QString& address);

/// The plain text of a letter.
[[nodiscard]] QString LetterText(const QString& letter);

/// What became of the rows of a campaign that ask for a letter.
struct LetterCounts {
  qint64 wentOut = 0;
  qint64 missed = 0;  ///< the mailshot processed the row first
};
/// \throws DatabaseError
[[nodiscard]] LetterCounts ReadLetterCounts(Connection& connection, int campaignId);

/// "Went out: 4 / 6", empty while none did. The counter "Letters to Generate" counts those, too.
/// \param letters  that counter
[[nodiscard]] QString LettersOutLine(const LetterCounts& counts, int letters);
/// "n customers with a letter were processed by the mailshot and get none; make letters first." While letters and messages are both to
/// come it says which goes first; else it is empty.
[[nodiscard]] QString LettersMissedLine(const LetterCounts& counts, const CounterValues& rows);

}  // namespace qbx
