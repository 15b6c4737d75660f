// Whom an e-mail goes to.

#pragma once

#include <QString>
#include <QStringList>

namespace qbx {

struct Recipients {
  QStringList addresses = {};
  QString problem =
      {};  ///< what keeps the e-mail from being sent at all: no address, or one that cannot be written; empty: nothing
};

/// \param typed  addresses separated by ";", as a row has them
[[nodiscard]] Recipients RecipientsOf(const QString& typed);

}  // namespace qbx
