// Who gets a letter, and what stands in it.

#pragma once

#include <QString>

#include "database/connection.h"
#include "database/recordset.h"

namespace qbx {

/// The rows that letters are made of, in printing order.
/// \param again  those that get nothing but a letter also when they are processed
[[nodiscard]] QString SelectLetterRows(int campaignId, bool again);

/// "Mr Alan Hartley" of a row.
[[nodiscard]] QString NameLine(const Recordset& row);

/// Why no letter can be delivered to an address (lines separated by CR).
/// \return a sentence for the results log; empty when nothing is wrong
[[nodiscard]] QString AddressProblem(const QString& address);

/// The plain text of a letter.
[[nodiscard]] QString LetterText(const QString& letter);

/// "n customers with a letter were processed by the mailshot and get none; make letters first.", empty when there is none.
/// \throws DatabaseError
[[nodiscard]] QString LettersMissedLine(Connection& connection, int campaignId);

}  // namespace qbx
