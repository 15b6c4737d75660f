// A copy of an embedded host database that is in use.

#pragma once

#include <QString>
#include <functional>

#include "hostdb/host_database.h"

namespace qbx {

/// Copies a database page by page while others may go on using it. The copy is written under a temporary name and renamed when it is
/// whole, so a failure leaves a file of that name as it was.
/// \param cancelled  asked every few pages; true gives the copy up, which is no problem
/// \return why the copy could not be made
[[nodiscard]] HostDatabaseProblem CopyHostDatabase(const QString& path, const QString& target,
                                                   const std::function<bool()>& cancelled);

}  // namespace qbx
