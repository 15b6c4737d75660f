// The two event tables of the host database.

#include "database/event_log.h"

#include "database/command.h"
#include "util/text.h"

namespace qbx {

namespace {

constexpr int kFirstVersionWithLog = 62;
constexpr int kKeyLength = 25;
constexpr int kDetailsLength = 80;

struct NamedValue {
  QString name;
  Value value;
};

/// Calls below the statement routines: their error handling writes events, so an event that fails must not come back to
/// them.
void CallQuietly(Connection& connection, const QString& procedure, const std::vector<NamedValue>& values) {
  if (!connection.IsOpen()) return;
  try {
    Command command;
    command.commandText = procedure;
    command.commandTimeout = connection.CommandTimeout();
    command.connection = &connection;
    command.parameters = connection.Driver().DescribeProcedure(procedure);
    for (const NamedValue& each : values)
      command.SetParameter(each.name, each.value);
    command.Execute();
  } catch (const DatabaseError&) {
    // A lost event is the smaller harm: reporting it would need another event.
  }
}

}  // namespace

EventLog::EventLog(Connection& connection, const EventContext& context, const LogFile& log)
    : connection_(connection), context_(context), log_(log) {}

void EventLog::LogEvent(int eventType, int tableId, const QString& key, const QString& details) {
  if (context_.DatabaseVersion < kFirstVersionWithLog) {
    log_.WriteLog(QStringLiteral("Event - Type:%1, Table:%2, Key:").arg(eventType).arg(tableId) + key);
    return;
  }
  CallQuietly(connection_, QStringLiteral("proc_addp__Log"),
              {{QStringLiteral("@Username"), context_.user},
               {QStringLiteral("@EventType"), eventType},
               {QStringLiteral("@TableID"), tableId},
               {QStringLiteral("@TableKey"), CutText(key, kKeyLength)},
               {QStringLiteral("@Details"), CutText(details, kDetailsLength)}});
}

void EventLog::LogMarketingEvent(const QString& event) {
  CallQuietly(connection_, QStringLiteral("proc_addp__Marketing_Log"),
              {{QStringLiteral("@UserID"), context_.user},
               {QStringLiteral("@Event"), event},
               {QStringLiteral("@CampaignID"), context_.campaignId}});
}

}  // namespace qbx
