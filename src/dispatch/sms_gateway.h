// The client of the SMS gateway.

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

/// The balance when the answer to a credit query could not be read.
inline constexpr double kUnreadableBalance = -999;

/// The result of one text.
struct SmsResult {
  bool accepted = false;
  bool answered = false;   ///< the gateway's reply was read: the text is recorded, whether accepted or not
  bool uncertain = false;  ///< no complete answer came, or an unclear one: the text may have gone out
  int messageId = 0;       ///< the gateway's number of the text, 0 when it was refused
  ServerSign sign = ServerSign::kServes;
  /// Why the text was refused, or why the gateway could not be asked; empty when the text was accepted.
  QString failure = {};
};

/// Sends texts through the gateway: one GET a message, over one kept connection. Account, server and sender name come
/// from the options. Never throws. Not thread-safe.
///
/// The gateway is called over plain HTTP, even when the setting says https.
class SmsGateway {
 public:
  SmsGateway(HttpClient& http, const Options& options, const ServiceSettings& service, Connection& connection,
             EventLog& events, ResultsLog& resultsLog, DispatchState& state, Diagnostics diagnostics, QString user);

  /// \return the base address, ending in "/"; empty when no server is set
  [[nodiscard]] QString SMSGatewayURL() const;

  struct Credits {
    double balance = 0;  ///< 0 when the account was refused, kUnreadableBalance when the answer could not be read
    QString error;       ///< not empty when there was no answer at all
  };
  /// Asks for the account's balance. The dispatch state keeps it when the gateway knows the account.
  [[nodiscard]] Credits GetSMSCredits();

  /// Sends one text. A refusal is written to the event log and the results log. A web page is no reply. A failure of
  /// the transport is shown through the common error report; in a run only the first one is shown, and the others go to
  /// the log and the results log.
  /// \param customer  the customer's account reference, for the logs
  /// \param mobile    cleaned number
  /// \param message   as `SmsText` makes it
  [[nodiscard]] SmsResult SendSMS(const QString& customer, const QString& mobile, const QString& message);

  /// Records a text that was answered in the host's SMS table. A failure is ignored.
  void RecordSMS(const QString& customer, const QString& mobile, const QString& message, int status, int messageId);

  /// Sends a test text with the given values. A refusal is shown in a message box. Nothing is recorded, and the kept
  /// balance does not change.
  /// \param message  sent as `SmsText` makes it
  [[nodiscard]] bool SendTestSMS(const QString& sender, const QString& clientId, const QString& password,
                                 const QString& mobile, const QString& message);

  /// From now until EndRun only the first transport failure is shown.
  void BeginRun();
  void EndRun() { inRun_ = false; }

 private:
  /// Asks the gateway; gives an error when none is set.
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
