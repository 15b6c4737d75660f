// The two event tables of the host database.

#include "database/event_log.h"

#include "util/text.h"

namespace qbx {

namespace {

constexpr int kFirstVersionWithLog = 62;
constexpr int kKeyLength = 25;
constexpr int kDetailsLength = 80;

/// Seconds that an event waits for a lock: it must not hold up the work that it tells of.
constexpr int kTimeout = 2;

/// Calls below the statement routines: their error handling writes events, so an event that fails must not come back to
/// them.
void CallQuietly(const Connection& connection, Procedure& procedure, Procedure::Arguments arguments) {
  if (!connection.IsOpen()) return;
  try {
    procedure.Execute(arguments);
  } catch (const DatabaseError&) {
    // A lost event is the smaller harm: reporting it would need another event.
  }
}

}  // namespace

EventLog::EventLog(Connection& connection, const EventContext& context, const LogFile& log)
    : connection_(connection),
      context_(context),
      log_(log),
      addEvent_(connection, "proc_addp__Log", kTimeout),
      addMarketingEvent_(connection, "proc_addp__Marketing_Log", kTimeout) {
  connection.OnReopened(
      [this] { LogEvent(kEventError, 0, QStringLiteral("CONN"), QStringLiteral("Connection Lost - reconnected.")); });
}

void EventLog::LogEvent(int eventType, int tableId, const QString& key, const QString& details) {
  if (context_.DatabaseVersion < kFirstVersionWithLog) {
    log_.WriteLog(QStringLiteral("Event - Type:%1, Table:%2, Key:").arg(eventType).arg(tableId) + key);
    return;
  }
  CallQuietly(connection_, addEvent_,
              {{"@Username", context_.user},
               {"@EventType", eventType},
               {"@TableID", tableId},
               {"@TableKey", CutText(key, kKeyLength)},
               {"@Details", CutText(details, kDetailsLength)}});
}

void EventLog::LogMarketingEvent(const QString& event) {
  CallQuietly(connection_, addMarketingEvent_,
              {{"@UserID", context_.user}, {"@Event", event}, {"@CampaignID", context_.campaignId}});
}

}  // namespace qbx
