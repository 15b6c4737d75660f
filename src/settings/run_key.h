// The run key, which marks the work of one run of the program.

#pragma once

#include <QDateTime>
#include <QString>
#include <optional>

namespace qbx {

/// "user-ddMMyy-HHmmss-n" with n from 0 to 98, at most 36 characters.
[[nodiscard]] QString MakeRunKey(const QString& user, const QDateTime& now);

/// The day on which the run with this key began; nothing when the text is no run key.
[[nodiscard]] std::optional<QDate> DayOfRunKey(const QString& key);

}  // namespace qbx
