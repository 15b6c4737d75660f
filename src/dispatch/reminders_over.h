// Reminders that come too late.

#pragma once

#include <QDate>
#include <QString>

#include "database/statements.h"

namespace qbx {

/// Looks at the reminder dates of the rows that a run is going to send; only rows of the reminder query have one.
/// \return a sentence for the user when the last of them is over, otherwise empty, also when they could not be read (reported)
[[nodiscard]] QString RemindersOverText(Statements& statements, int campaignId, const QDate& today);

}  // namespace qbx
