// The two event tables of the host database.

#pragma once

#include <QString>

#include "database/connection.h"
#include "database/event_context.h"
#include "database/procedure.h"
#include "diagnostics/log_file.h"

namespace qbx {

enum EventType { kEventError = 6, kEventSms = 7, kEventPrint = 8, kEventMarketing = 9 };

inline constexpr char kMarketingKey[] = "MARKETING";

/// Writes events, and one for each re-opening of its connection. Swallows its own failures, so that an error report can
/// itself write an event; shows nothing. An error inside a transaction is written after the end of the transaction,
/// because a rollback would undo the event, too.
class EventLog {
 public:
  EventLog(Connection& connection, const EventContext& context, const LogFile& log);
  EventLog(const EventLog&) = delete;
  EventLog& operator=(const EventLog&) = delete;

  /// One row of the host's general log: key cut to 25 characters, details to 80. With a database older than version 62
  /// a line of the log file instead.
  void LogEvent(int eventType, int tableId, const QString& key, const QString& details);
  /// One row of the marketing log, tied to the current campaign.
  void LogMarketingEvent(const QString& event);

 private:
  Connection& connection_;
  const EventContext& context_;
  const LogFile& log_;
  Procedure addEvent_;
  Procedure addMarketingEvent_;
};

}  // namespace qbx
