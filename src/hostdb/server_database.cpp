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

/// The first line of a batch that is no comment.
QString FirstLine(const QString& batch) {
  for (const QString& line : batch.split(u'\n'))
    if (!line.startsWith(QLatin1String("--"))) return line.trimmed();
  return {};
}

/// What became of a batch that failed.
QString Outcome(const DatabaseError& error, const QString& place) {
  if (error.ConnectionLost())
    return QStringLiteral(
               "The connection to the server was lost in %1. The server undoes what was not finished. Run the command again: what is done already does no harm.")
        .arg(place);
  if (error.Number() == kCommandTimedOut)
    return QStringLiteral(
               "The server did not finish %1 in time, and was told to stop. Run the command again: what is done already does no harm.")
        .arg(place);
  return QStringLiteral("The server refused %1. Nothing was changed. It said: %2").arg(place, error.Description());
}

/// The error of a batch, with words to find the batch by.
DatabaseError InBatch(const DatabaseError& error, qsizetype number, const QStringList& batches) {
  const QString place = QStringLiteral("batch %1 of the %2 of the script, which begins \"%3\"")
                            .arg(number)
                            .arg(batches.size())
                            .arg(FirstLine(batches[number - 1]));
  return DatabaseError(error.Number(), Outcome(error, place), error.Errors());
}

}  // namespace

void InstallOnServer(Session& session) {
  const QStringList batches = BatchesOf(ServerScript());
  qsizetype number = 0;
  try {
    for (const QString& batch : batches) {
      ++number;
      session.Execute(batch);
    }
  } catch (const DatabaseError& error) {
    RollBackScript(session);
    throw InBatch(error, number, batches);
  }
}

}  // namespace qbx
