// Turning a provider's error list into words for the user.

#pragma once

#include <QString>
#include <vector>

#include "database/connection.h"
#include "database/database_error.h"
#include "database/event_context.h"
#include "database/event_log.h"
#include "database/last_error.h"
#include "diagnostics/diagnostics.h"

namespace qbx {

/// Recognises the common failures of the server by fixed phrases, logs the result, writes an event and shows it.
class ErrorInterpretation {
 public:
  ErrorInterpretation(const EventContext& context, EventLog& events, LastError& lastError, Diagnostics diagnostics);

  /// \param connection  whose error list is read; none: nothing is shown or logged
  /// \param routine     the statement routine that failed, and
  /// \param sql         its statement: neither is shown or logged, since a statement can hold what a customer said in
  ///                    confidence
  /// \param pending     the error that sent the caller here
  /// \param before      what is shown above the message, in the same box
  /// \return the message as built
  QString ReportDatabaseError(const Connection* connection, const QString& routine, const QString& sql,
                              const DatabaseError& pending, const QString& before = {});

 private:
  void OfferToQuit(const QString& message);

  const EventContext& context_;
  EventLog& events_;
  LastError& lastError_;
  Diagnostics diagnostics_;
};

/// The part of `text` behind the first `start` up to the next `end`, both found without regard to case; empty when
/// either is missing.
[[nodiscard]] QString TextBetween(const QString& text, const QString& start, const QString& end);

}  // namespace qbx
