// E-mail sending, one message at a time.

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

/// What came of one e-mail. A failure's reason is in `LastError::LastEmailError`.
struct EmailResult {
  bool sent = false;
  bool uncertain = false;  ///< the message was written and no complete answer came: it may have gone out
  ServerSign sign = ServerSign::kUnknown;
  QString copyRefused = {};  ///< why the blind copy was left out; empty when nobody refused it
};

/// Sends e-mails through the mail server of the options: the customer's own, or the product family's. Never throws. Not
/// thread-safe.
///
/// A single message is one session (connect, send, QUIT). Inside a run (BeginRun .. EndRun) the connection and the window are kept from
/// message to message, the count-down comes once a connection, the waits after a success are left out, and the question that follows a failure is asked once about refusals and once about the connection; later failures go to the logs only.
///
/// A blind copy that is refused is left out, for the rest of the run: the customer's e-mail goes without it.
class EmailSender {
 public:
  EmailSender(MailTransport& transport, MimeWriter& mime, const Options& options, const ServiceSettings& service,
              Connection& connection, EventLog& events, DispatchState& state, LastError& lastError, SendEmailView& view,
              Diagnostics diagnostics);

  /// Sends a plain-text e-mail from the reminder sender.
  /// \param to  addresses separated by ";"
  [[nodiscard]] EmailResult SendEmailMessage(const QString& to, const QString& subject, const QString& body);

  /// \return what keeps a message from being sent at all (no or a broken address), empty when nothing does
  [[nodiscard]] QString Problem(const QString& to, const QString& subject, const QString& body);

  /// Writes a sent e-mail into the customer's history. A failure leaves a log line.
  void RecordEmail(const QString& customer, const QString& to, const QString& subject, const QString& body);

  void BeginRun();
  /// Closes the kept connection; an unclean end is logged and changes no row.
  void EndRun();

 private:
  [[nodiscard]] bool UsesQbxServer() const;
  [[nodiscard]] MailServer ServerSettings(bool qbxServer) const;
  /// \return what is wrong with the message, empty when the envelope is complete
  [[nodiscard]] QString BuildEnvelope(const QString& to, const QString& subject, const QString& body,
                                      MailEnvelope& envelope);
  void CountDown();
  /// Who is to blame for a failure: the message itself, the server's word about it, or the connection.
  enum class Blame { kMessage, kRefusal, kTransport };
  struct Failure {
    Blame blame = Blame::kTransport;
    QString text = {};  ///< empty: it did not fail
  };
  [[nodiscard]] Failure Deliver(const MailServer& server, const MailEnvelope& envelope, EmailResult& result);
  [[nodiscard]] MailResult Transmit(const MailServer& server, const MailEnvelope& envelope);
  /// Sends a message again without the blind copy when it is this that was refused. The customer's message is not lost for it.
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
  bool windowOpen_ = false;  ///< of this run; stays open from message to message
  bool connected_ = false;   ///< this run has a connection, so its count-down is over
  bool transportAsked_ = false;
  bool refusalAsked_ = false;
  QString refusedCopy_;  ///< the copy address that the server refused in this run
};

}  // namespace qbx
