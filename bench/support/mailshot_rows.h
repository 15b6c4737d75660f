// Rows for a mailshot, none of which can fail.

#pragma once

#include <sqlite3.h>

#include "dispatch/mailshot_checks.h"
#include "dispatch/send_journal.h"

namespace qbx::bench {

/// Texts of the length that people write.
[[nodiscard]] MailshotTemplates SampleTemplates();

/// Replaces all rows and customers of a database by `rows` that are flagged for one channel.
void AddMailshotRows(sqlite3* database, int campaignId, Channel channel, int rows);

/// Makes every row due again.
void ResetMailshot(sqlite3* database);

}  // namespace qbx::bench
