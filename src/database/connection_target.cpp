// Taking a connection string apart.

#include "database/connection.h"

namespace qbx {

ConnectionTarget ConnectionTarget::Parse(const QString& connectionString) {
  ConnectionTarget target;
  for (const QString& part : connectionString.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
    const qsizetype equals = part.indexOf(QLatin1Char('='));
    if (equals < 0) continue;
    const QString key = part.left(equals).trimmed();
    const QString value = part.mid(equals + 1).trimmed();
    if (key.compare(QLatin1String("Data Source"), Qt::CaseInsensitive) == 0) target.server = value;
    if (key.compare(QLatin1String("Initial Catalog"), Qt::CaseInsensitive) == 0) target.database = value;
  }
  return target;
}

}  // namespace qbx
