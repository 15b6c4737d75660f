// The SMS gateway client.

#pragma once

#include <QString>

#include "database/event_log.h"
#include "database/procedure.h"
#include "diagnostics/diagnostics.h"
#include "dispatch/dispatch_state.h"
#include "dispatch/results_log.h"
#include "dispatch/server_watch.h"
#include "network/http_client.h"
#include "settings/options.h"
#include "settings/service_settings.h"

namespace qbx {

/// The balance of a credit query whose answer could not be read.
inline constexpr double kUnreadableBalance = -999;

/// What came of one text.
struct SmsResult {
  bool accepted = false;
  bool answered = false;   ///< the gateway's reply was read: the text belongs into the record, accepted or not
  bool uncertain = false;  ///< no complete answer came, or one that does not tell: the text may have gone out
  int messageId = 0;       ///< the gateway's number, 0 when refused
  ServerSign sign = ServerSign::kServes;
  QString failure = {};  ///< why the text was refused, or the gateway could not be asked; empty when it was accepted
};

/// Sends texts through the gateway, one GET a message, over one kept connection. The account, server and sender name
/// come from the options. Never throws. Not thread-safe.
///
/// The gateway is addressed over plain HTTP, also when the setting names https.
class SmsGateway {
 public:
  SmsGateway(HttpClient& http, const Options& options, const ServiceSettings& service, Connection& connection,
             EventLog& events, ResultsLog& resultsLog, DispatchState& state, Diagnostics diagnostics, QString user);

  /// \return the base address with "/" at its end; empty when no server is set
  [[nodiscard]] QString SMSGatewayURL() const;

  struct Credits {
    double balance = 0;  ///< 0 when the account was refused, kUnreadableBalance when the answer could not be read
    QString error;       ///< not empty: no answer at all
  };
  /// Asks for the account's balance, which is kept in the dispatch state when the gateway knows the account.
  [[nodiscard]] Credits GetSMSCredits();

  /// Sends one text. A refusal is written to the event log and the results log. A web page is no reply. A failure of the transport is shown
  /// through the common error report; inside a run only the first one is, those that follow go to the log and the
  /// results log.
  /// \param customer  the customer's account reference, for the logs
  /// \param mobile    cleaned number
  /// \param message   as `SmsText` makes it
  [[nodiscard]] SmsResult SendSMS(const QString& customer, const QString& mobile, const QString& message);

  /// Writes a text that was answered into the host's SMS table. A failure is ignored.
  void RecordSMS(const QString& customer, const QString& mobile, const QString& message, int status, int messageId);

  /// The test send: same request with the values given; a refusal is shown in a message box, nothing is recorded, the
  /// balance is left alone.
  /// \param message  goes as `SmsText` makes it
  [[nodiscard]] bool SendTestSMS(const QString& sender, const QString& clientId, const QString& password,
                                 const QString& mobile, const QString& message);

  /// From here to EndRun only the first transport failure is shown.
  void BeginRun();
  void EndRun() { inRun_ = false; }

 private:
  /// Asks the gateway; an error when none is set.
  [[nodiscard]] HttpReply Get(const QString& url);
  [[nodiscard]] QString SendUrl(const QString& clientId, const QString& password, const QString& mobile,
                                const QString& sender, const QString& message) const;
  void ReportTransportFailure(const QString& customer, const QString& mobile, const SmsResult& result);
  void LogRefusal(const QString& customer, const QString& mobile, const QString& reason);

  HttpClient& http_;
  const Options& options_;
  const ServiceSettings& service_;
  EventLog& events_;
  ResultsLog& resultsLog_;
  DispatchState& state_;
  Diagnostics diagnostics_;
  QString user_;
  Procedure record_;
  bool inRun_ = false;
  bool failureShown_ = false;
};

}  // namespace qbx
