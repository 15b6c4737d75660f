// Rows for a mailshot. All of them can be sent.

#pragma once

#include <sqlite3.h>

#include "dispatch/mailshot_checks.h"
#include "dispatch/send_journal.h"

namespace qbx::bench {

/// Texts of usual length.
[[nodiscard]] MailshotTemplates SampleTemplates();

/// Replaces all rows and customers of a database by `rows` rows with the send flag of one channel.
void AddMailshotRows(sqlite3* database, int campaignId, Channel channel, int rows);

/// Makes all rows due again.
void ResetMailshot(sqlite3* database);

}  // namespace qbx::bench
