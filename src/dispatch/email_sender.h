// Sending e-mails, one at a time.

#pragma once

#include <QString>

#include "database/event_log.h"
#include "database/last_error.h"
#include "database/procedure.h"
#include "diagnostics/diagnostics.h"
#include "dispatch/dispatch_state.h"
#include "dispatch/send_email_view.h"
#include "dispatch/server_watch.h"
#include "network/mail_transport.h"
#include "network/mime_message.h"
#include "settings/options.h"
#include "settings/service_settings.h"

namespace qbx {

/// The result of one e-mail. `LastError::LastEmailError` has the reason of a failure.
struct EmailResult {
  bool sent = false;
  bool uncertain = false;  ///< the message was written but no complete answer came: it may have gone out
  ServerSign sign = ServerSign::kUnknown;
  QString copyRefused = {};  ///< why the blind copy was left out; empty when it was not refused
};

/// Sends e-mails through the mail server of the options: the customer's own, or the product family's. Never throws. Not
/// thread-safe.
///
/// A single message is one session (connect, send, QUIT). During a run (BeginRun .. EndRun) the connection and the
/// window are kept from message to message, the count-down is shown once a connection, and nothing is waited for after
/// a success. The question after a failure is asked once about refusals and once about the connection; later failures
/// are only logged.
///
/// A refused blind copy is left out for the rest of the run, and the customer's e-mail goes without it.
class EmailSender {
 public:
  EmailSender(MailTransport& transport, MimeWriter& mime, const Options& options, const ServiceSettings& service,
              Connection& connection, EventLog& events, DispatchState& state, LastError& lastError, SendEmailView& view,
              Diagnostics diagnostics);

  /// Sends a plain-text e-mail from the reminder sender.
  /// \param to  addresses separated by ";"
  [[nodiscard]] EmailResult SendEmailMessage(const QString& to, const QString& subject, const QString& body);

  /// \return why a message cannot be sent at all (no address, or an invalid one); empty when it can
  [[nodiscard]] QString Problem(const QString& to, const QString& subject, const QString& body);

  /// Records a sent e-mail in the customer's history. A failure is only logged.
  void RecordEmail(const QString& customer, const QString& to, const QString& subject, const QString& body);

  void BeginRun();
  /// Closes the kept connection. A failure in closing is only logged.
  void EndRun();

 private:
  [[nodiscard]] bool UsesQbxServer() const;
  [[nodiscard]] MailServer ServerSettings(bool qbxServer) const;
  /// \return what is wrong with the message; empty when the envelope is complete
  [[nodiscard]] QString BuildEnvelope(const QString& to, const QString& subject, const QString& body,
                                      MailEnvelope& envelope);
  void CountDown();
  /// The cause of a failure: the message, the server's refusal, or the connection.
  enum class Blame { kMessage, kRefusal, kTransport };
  struct Failure {
    Blame blame = Blame::kTransport;
    QString text = {};  ///< empty when there was no failure
  };
  [[nodiscard]] Failure Deliver(const MailServer& server, const MailEnvelope& envelope, EmailResult& result);
  [[nodiscard]] MailResult Transmit(const MailServer& server, const MailEnvelope& envelope);
  /// Sends a message again without the blind copy if the server refused the copy.
  [[nodiscard]] MailResult TransmitWithoutCopy(const MailServer& server, MailEnvelope envelope, MailResult refused,
                                               EmailResult& result);
  [[nodiscard]] bool ShallAsk(Blame blame);
  void ReportFailure(Failure failure);

  MailTransport& transport_;
  MimeWriter& mime_;
  const Options& options_;
  const ServiceSettings& service_;
  EventLog& events_;
  DispatchState& state_;
  LastError& lastError_;
  SendEmailView& view_;
  Diagnostics diagnostics_;
  Procedure record_;
  bool inRun_ = false;
  bool windowOpen_ = false;  ///< of this run; it stays open from message to message
  bool connected_ = false;   ///< whether this run has connected, so its count-down is over
  bool transportAsked_ = false;
  bool refusalAsked_ = false;
  QString refusedCopy_;  ///< the copy address that the server refused in this run
};

}  // namespace qbx
