// Who gets a letter, and what is in it.

#pragma once

#include <QString>

#include "database/connection.h"
#include "database/recordset.h"
#include "letters/letters_table.h"
#include "results/counters.h"

namespace qbx {

/// The SELECT of the rows that get letters, in printing order.
/// \param again  includes processed rows that get nothing but a letter
[[nodiscard]] QString SelectLetterRows(int campaignId, bool again);

/// The name in a row, such as "Mr Alan Hartley".
[[nodiscard]] QString NameLine(const Recordset& row);

/// The letter for a row.
[[nodiscard]] LetterRow LetterOf(const Recordset& row, const QString& merged);

/// Why no letter can be delivered to an address (lines separated by CR).
/// \return a sentence for the results log; empty when one can
[[nodiscard]] QString AddressProblem(const QString& address);

/// The plain text of a letter.
[[nodiscard]] QString LetterText(const QString& letter);

/// The state of the rows of a campaign that ask for a letter.
struct LetterCounts {
  qint64 wentOut = 0;
  qint64 missed = 0;  ///< rows that the mailshot processed before their letter was made
};
/// \throws DatabaseError
[[nodiscard]] LetterCounts ReadLetterCounts(Connection& connection, int campaignId);

/// The line "Went out: 4 / 6"; empty as long as no letter went out. The counter "Letters to Generate" includes those
/// that went out.
/// \param letters  the value of that counter
[[nodiscard]] QString LettersOutLine(const LetterCounts& counts, int letters);
/// The line "n customers with a letter were processed by the mailshot and get none; make letters first." While letters
/// and messages are both due it says which must go first; otherwise it is empty.
[[nodiscard]] QString LettersMissedLine(const LetterCounts& counts, const CounterValues& rows);

}  // namespace qbx
