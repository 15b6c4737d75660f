// A copy of an embedded host database that is in use.

#pragma once

#include <QString>
#include <functional>

#include "hostdb/host_database.h"

namespace qbx {

enum class CopyOutcome { kCopied, kCancelled, kFailed };

/// Copies a database as it is now, page by page, while others may go on using it. The copy is written under a temporary name beside the
/// target and renamed when it is whole, so a failure leaves a file of that name as it was. The copy has the original's permissions.
/// \param cancelled  asked every few pages; true gives the copy up
/// \param problem    why it failed, as a sentence for the user
[[nodiscard]] CopyOutcome CopyHostDatabase(const QString& path, const QString& target,
                                           const std::function<bool()>& cancelled, QString& problem);

/// The same through a connection that has the database to itself. \return never kCancelled
[[nodiscard]] CopyOutcome CopyOpenDatabase(sqlite3* database, const QString& target, QString& problem);

}  // namespace qbx
