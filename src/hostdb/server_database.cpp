#include "hostdb/server_database.h"

#include "database/database_error.h"
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

namespace {

/// Ends the transaction that the script began in a batch, which the session knows nothing of.
void RollBackScript(Session& session) {
  try {
    session.Execute(QStringLiteral("IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION"));
  } catch (const DatabaseError&) {
    // The connection is lost, and the server rolls back by itself.
  }
}

}  // namespace

void InstallOnServer(Session& session) {
  try {
    for (const QString& batch : BatchesOf(ServerScript()))
      session.Execute(batch);
  } catch (...) {
    RollBackScript(session);
    throw;
  }
}

}  // namespace qbx
