// Why a send flag of a row cannot be ticked.

#pragma once

#include <QString>

#include "database/recordset.h"
#include "dispatch/send_refusals.h"

namespace qbx {

/// The reasons for which a run would send nothing: a fault of the number or address, or else the customer's present
/// refusal. Each is a few words in lower case ("no mobile"), and empty when there is none.
/// \param refused  by the host's view `Send_Refusals`, as `SendRefusals` reads it; kNone to check only the address
[[nodiscard]] QString WhyNoText(const QString& mobile, Refusal refused = Refusal::kNone);
[[nodiscard]] QString WhyNoEmail(const QString& email, Refusal refused = Refusal::kNone);
/// \param address  lines separated by CR
[[nodiscard]] QString WhyNoLetter(const QString& address, Refusal refused = Refusal::kNone);

/// The fault of the number or address that a send flag of a row needs.
/// \param rows   with the columns of [Campaign Results]
/// \param row    position in the current order
/// \param flag   "Send_SMS", "Send_Email" or "Send_Letter", ignoring case; for any other column there is no reason
[[nodiscard]] QString WhyNoFlag(const Recordset& rows, qint64 row, const QString& flag);

}  // namespace qbx
