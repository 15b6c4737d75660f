// Everything that sends, over a host database of its own and the servers on loopback.

#pragma once

#include "dispatch/mailshot.h"
#include "network/curl_http_client.h"
#include "network/curl_mail_transport.h"
#include "support/embedded_host.h"
#include "support/printing.h"

namespace qbx::test {

inline constexpr int kCampaign = 12;
inline constexpr char kSmsPassword[] = "gate&päss";
inline constexpr char kMailPassword[] = "mail-secret";

/// Writes down what the window of an e-mail showed.
class RecordingView final : public SendEmailView {
 public:
  QStringList shown;
  void Open(bool viaQbxServer) override { shown += viaQbxServer ? "open qbx" : "open"; }
  void SetStatus(const QString& text) override { shown += text; }
  void ShowFailure(const QString& error) override { shown += QString("failure: ") + error; }
  void Close() override { shown += "close"; }
};

/// A garage that is set up to send texts and e-mails through its own accounts.
struct SendingDesk {
  SendingDesk(int httpPort, int smtpPort, const HostInfo& onComputer) : computer(onComputer) {
    options.SMS_Server = QString("http://127.0.0.1:%1").arg(httpPort);
    options.SMS_ClientID = "GARAGE1";
    options.SMS_ClientPassword = QString::fromUtf8(kSmsPassword);
    options.Reminder_From_SMS = "Hill Garage";
    options.Reminder_From_Name = "Hill Garage";
    options.Reminder_From_Email = "office@hill.test";
    options.SMTP_Server = "127.0.0.1";
    options.SMTP_Port = QString::number(smtpPort);
    options.SMTP_UserName = "garage";
    options.SMTP_Password = QString::fromUtf8(kMailPassword);
    service.supportTelephone = "01234 567890";
  }

  /// Adds a row with a text when there is a mobile number and an e-mail when there is an address.
  qint64 AddRow(int customer, const QString& mobile, const QString& address, int campaign = kCampaign) {
    host.Run(
        QString(
            "INSERT INTO Customers (Customer) SELECT %1 WHERE NOT EXISTS (SELECT 1 FROM Customers WHERE Customer = %1)")
            .arg(customer));
    host.Run(QString("INSERT INTO [Campaign Results] (CampaignID, Customer, Contact, Make, Mobile, Email, Send_SMS, "
                     "Send_Email) VALUES (%1, %2, 'Mr %2', 'Ford', '%3', '%4', %5, %6)")
                 .arg(campaign)
                 .arg(customer)
                 .arg(mobile, address)
                 .arg(mobile.isEmpty() ? 0 : 1)
                 .arg(address.isEmpty() ? 0 : 1));
    return host.Ask("SELECT max(RecordID) FROM [Campaign Results]").ToInt();
  }

  [[nodiscard]] Mailshot MakeMailshot(MailshotObserver& observer) {
    return Mailshot({host.statements, host.events, gateway, email, resultsLog, counters, estimate, state,
                     host.lastError, options, service, computer, host.diagnostics, "TESTER"},
                    observer);
  }
  MailshotSummary Send(MailshotMode mode = MailshotMode::kSend) {
    MailshotObserver nobody;
    return MakeMailshot(nobody).Send(kCampaign, templates, mode);
  }

  /// The customers whose rows are marked.
  [[nodiscard]] QStringList Processed() {
    return host.Rows("SELECT Customer FROM [Campaign Results] WHERE Processed = 1 ORDER BY Customer");
  }
  /// The results log without its times.
  [[nodiscard]] QStringList LogTexts() const {
    QStringList texts;
    for (const QString& line : resultsLog.Lines())
      texts += line.section(" - ", 1);
    return texts;
  }

  EmbeddedHost host;
  const HostInfo& computer;
  Options options;
  ServiceSettings service;
  MailshotTemplates templates{"Hello {contact}", "Your {make}", "Dear {contact}"};
  DispatchState state;
  RecordingView view;
  CurlHttpClient http{{}, HttpLimits{.totalSeconds = 2}};
  CurlMailTransport mail{{}, MailLimits{.replySeconds = 10}};
  MimeWriter mime{host.clock};
  ResultsLog resultsLog{host.clock, host.ui};
  SmsGateway gateway{http,       options, service,          host.connection, host.events,
                     resultsLog, state,   host.diagnostics, "TESTER"};
  EmailSender email{mail,        mime,  options,        service, host.connection,
                    host.events, state, host.lastError, view,    host.diagnostics};
  Counters counters{host.statements};
  CreditEstimate estimate{host.statements, host.diagnostics};
};

}  // namespace qbx::test
