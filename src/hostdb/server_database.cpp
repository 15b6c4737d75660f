#include "hostdb/server_database.h"

#include "database/session.h"
#include "hostdb/embedded_sql.h"

namespace qbx {

QString ServerScript() {
  return QString::fromLatin1(EmbeddedServerScript());
}

QStringList BatchesOf(const QString& script) {
  QStringList batches;
  QStringList lines;
  const auto end = [&] {
    const QString batch = lines.join(u'\n').trimmed();
    if (!batch.isEmpty()) batches += batch;
    lines.clear();
  };
  for (const QString& line : script.split(u'\n')) {
    if (line.trimmed().compare(QLatin1String("GO"), Qt::CaseInsensitive) == 0)
      end();
    else
      lines += line;
  }
  end();
  return batches;
}

void InstallOnServer(Session& session) {
  try {
    for (const QString& batch : BatchesOf(ServerScript()))
      session.Execute(batch);
  } catch (...) {
    // The server has rolled back by itself. The session may not have noticed, so it is told.
    session.Rollback();
    throw;
  }
}

}  // namespace qbx
