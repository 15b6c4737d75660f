// Why a send flag of a row cannot be ticked.

#pragma once

#include <QString>

#include "database/recordset.h"
#include "dispatch/send_refusals.h"

namespace qbx {

/// The reasons are those for which a run would send nothing: what is wrong with the number or the address, then what the customer says now.
/// All are a few words in lower case ("no mobile"), and empty where nothing is against it.
/// \param refused  by the host's view `Send_Refusals`, as `SendRefusals` reads it; kNone where only the address is asked about
[[nodiscard]] QString WhyNoText(const QString& mobile, Refusal refused = Refusal::kNone);
[[nodiscard]] QString WhyNoEmail(const QString& email, Refusal refused = Refusal::kNone);
/// \param address  lines separated by CR
[[nodiscard]] QString WhyNoLetter(const QString& address, Refusal refused = Refusal::kNone);

/// What is wrong with the number or the address that a send flag of a row needs.
/// \param rows   columns of [Campaign Results]
/// \param row    position in the current order
/// \param flag   "Send_SMS", "Send_Email" or "Send_Letter", without regard to case; any other column has no reason
[[nodiscard]] QString WhyNoFlag(const Recordset& rows, qint64 row, const QString& flag);

}  // namespace qbx
