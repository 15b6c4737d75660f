// What somebody may have meant.

#pragma once

#include <QString>
#include <QStringList>

namespace qbx::ctl {

/// " Did you mean campaigns?" for a name that is close to one of those there are, otherwise empty.
[[nodiscard]] QString DidYouMean(const QString& typed, const QStringList& names);

}  // namespace qbx::ctl
