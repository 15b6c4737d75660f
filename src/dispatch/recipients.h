// The recipients of an e-mail.

#pragma once

#include <QString>
#include <QStringList>

namespace qbx {

struct Recipients {
  QStringList addresses = {};
  QString problem = {};  ///< why the e-mail cannot be sent: no address, or an invalid one; empty when it can
};

/// \param typed  addresses separated by ";", as in a row
[[nodiscard]] Recipients RecipientsOf(const QString& typed);

}  // namespace qbx
