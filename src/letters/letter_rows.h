// Who gets a letter, and what stands in it.

#pragma once

#include <QString>

#include "database/recordset.h"

namespace qbx {

/// The rows that letters are made of, in printing order.
[[nodiscard]] QString SelectLetterRows(int campaignId);

/// "Mr Alan Hartley" of a row.
[[nodiscard]] QString NameLine(const Recordset& row);

/// Why no letter can be delivered to an address (lines separated by CR): it is empty, or nothing in it looks like a postcode.
/// \return a sentence for the results log; empty when nothing is wrong
[[nodiscard]] QString AddressProblem(const QString& address);

}  // namespace qbx
