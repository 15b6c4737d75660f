#include "database/event_log.h"

#include <utility>

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
  connection.OnTransactionEnded([this] { WriteHeld(); });
}

void EventLog::LogEvent(int eventType, int tableId, const QString& key, const QString& details) {
  if (context_.DatabaseVersion < kFirstVersionWithLog) {
    log_.WriteLog(QStringLiteral("Event - Type:%1, Table:%2, Key:").arg(eventType).arg(tableId) + key);
    return;
  }
  const Event event{eventType, tableId, CutText(key, kKeyLength), CutText(details, kDetailsLength)};
  const bool mayBeUndone = connection_.IsOpen() && connection_.Driver().InTransaction();
  if (eventType == kEventError && mayBeUndone)
    held_.push_back(event);
  else
    Write(event);
}

void EventLog::Write(const Event& event) {
  CallQuietly(connection_, addEvent_,
              {{"@Username", context_.user},
               {"@EventType", event.type},
               {"@TableID", event.tableId},
               {"@TableKey", event.key},
               {"@Details", event.details}});
}

void EventLog::WriteHeld() {
  for (const Event& event : std::exchange(held_, {}))
    Write(event);
}

void EventLog::LogMarketingEvent(const QString& event) {
  CallQuietly(connection_, addMarketingEvent_,
              {{"@UserID", context_.user}, {"@Event", event}, {"@CampaignID", context_.campaignId}});
}

}  // namespace qbx
