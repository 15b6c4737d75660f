// Backing up the embedded database.

#pragma once

#include <QString>

namespace qbx {

class Application;

/// Whether this program works on an embedded database, which it can back up; a server has its own means.
[[nodiscard]] bool CanBackUpDatabase(const Application& app);

/// Copies the database in use to a file while the status box shows Cancel, and tells the user how it ended. Never throws.
void BackUpDatabase(Application& app, const QString& target);

}  // namespace qbx
