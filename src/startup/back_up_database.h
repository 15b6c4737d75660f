// Backing up the embedded database.

#pragma once

#include <QString>

namespace qbx {

class Application;

/// Whether this program can back the database up: only an embedded one. A server has its own means.
[[nodiscard]] bool CanBackUpDatabase(const Application& app);

/// Copies the database in use to a file while the status box offers Cancel, and tells the user the result. Never
/// throws.
void BackUpDatabase(Application& app, const QString& target);

}  // namespace qbx
