#include "database/event_log.h"

#include "util/text.h"

namespace qbx {

namespace {

constexpr int kFirstVersionWithLog = 62;
constexpr int kKeyLength = 25;
constexpr int kDetailsLength = 80;

/// Seconds that an event waits for a lock. It must not delay the work that it reports.
constexpr int kTimeout = 2;

/// Calls without the statement routines. Their error handling writes an event, so a failed event would call them again.
void CallQuietly(const Connection& connection, Procedure& procedure, Procedure::Arguments arguments) {
  if (!connection.IsOpen()) return;
  try {
    procedure.Execute(arguments);
  } catch (const DatabaseError&) {
    // A lost event does less harm: reporting it would need another event.
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
  const auto write = [this, eventType, tableId, key, details] {
    CallQuietly(connection_, addEvent_,
                {{"@Username", context_.user},
                 {"@EventType", eventType},
                 {"@TableID", tableId},
                 {"@TableKey", CutText(key, kKeyLength)},
                 {"@Details", CutText(details, kDetailsLength)}});
  };
  if (eventType == kEventError)
    connection_.AfterTransaction(write);
  else
    write();
}

void EventLog::LogMarketingEvent(const QString& event) {
  CallQuietly(connection_, addMarketingEvent_,
              {{"@UserID", context_.user}, {"@Event", event}, {"@CampaignID", context_.campaignId}});
}

}  // namespace qbx
