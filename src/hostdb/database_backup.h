// A copy of an embedded host database that is in use.

#pragma once

#include <QString>
#include <functional>

#include "hostdb/host_database.h"

namespace qbx {

enum class CopyOutcome { kCopied, kCancelled, kFailed };

/// Copies a database as it is now, page by page, while others use it. The copy gets a temporary name beside the target
/// and is renamed when it is complete, so a failure leaves an existing target as it was. The copy has the permissions
/// of the original.
/// \param cancelled  asked every few pages; true ends the copying
/// \param problem    why it failed, as a sentence for the user
[[nodiscard]] CopyOutcome CopyHostDatabase(const QString& path, const QString& target,
                                           const std::function<bool()>& cancelled, QString& problem);

/// The same over a connection that has the database to itself. \return never kCancelled
[[nodiscard]] CopyOutcome CopyOpenDatabase(sqlite3* database, const QString& target, QString& problem);

}  // namespace qbx
