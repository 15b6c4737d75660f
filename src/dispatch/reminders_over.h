// Reminders that come too late.

#pragma once

#include <QDate>
#include <QString>

#include "database/statements.h"

namespace qbx {

/// Checks the reminder dates of the rows that a run would send; only rows of the reminder query have one.
/// \return a sentence for the user when the last of these dates is in the past; otherwise, and when they could not be
///         read (reported), empty
[[nodiscard]] QString RemindersOverText(Statements& statements, int campaignId, const QDate& today);

}  // namespace qbx
