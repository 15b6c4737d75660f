// Turning a provider's error list into words for the user.

#pragma once

#include <QString>

#include "database/connection.h"
#include "database/database_error.h"
#include "database/event_context.h"
#include "database/event_log.h"
#include "database/last_error.h"
#include "diagnostics/diagnostics.h"

namespace qbx {

/// What stands in the log before the words of an error.
inline constexpr QLatin1String kDatabaseErrorPrefix("Database Error - ");

/// Recognises the common failures of the server by fixed phrases. Logs the result, writes an event and shows it.
class ErrorInterpretation {
 public:
  ErrorInterpretation(const EventContext& context, EventLog& events, LastError& lastError, Diagnostics diagnostics);

  /// \param connection  its error list is read; without a connection nothing is shown or logged
  /// \param routine     the statement routine that failed. Not shown or logged
  /// \param sql         its statement. Not shown or logged: a statement can hold what a customer said in confidence
  /// \param pending     the error that the caller caught
  /// \param before      shown above the message, in the same box
  /// \return the whole message
  QString ReportDatabaseError(const Connection* connection, const QString& routine, const QString& sql,
                              const DatabaseError& pending, const QString& before = {});

 private:
  void OfferToQuit(const QString& message);

  const EventContext& context_;
  EventLog& events_;
  LastError& lastError_;
  Diagnostics diagnostics_;
};

/// The part of `text` between the first `start` and the next `end`, both found without regard to case; empty when
/// either is missing.
[[nodiscard]] QString TextBetween(const QString& text, const QString& start, const QString& end);

}  // namespace qbx
