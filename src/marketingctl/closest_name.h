// Suggests a name for a mistyped one.

#pragma once

#include <QString>
#include <QStringList>

namespace qbx::ctl {

/// " Did you mean campaigns?" when one of the names is close to the typed one, otherwise empty.
[[nodiscard]] QString DidYouMean(const QString& typed, const QStringList& names);

}  // namespace qbx::ctl
