// The checks and questions before a mailshot.

#pragma once

#include <QString>
#include <optional>

#include "dispatch/campaign_claim.h"
#include "dispatch/message_maker.h"
#include "dispatch/send_journal.h"
#include "platform/user_interface.h"
#include "results/counters.h"
#include "settings/options.h"
#include "settings/service_settings.h"

namespace qbx {

/// Only the user "manager" (any case) may send while the host's company is an internal one.
[[nodiscard]] bool MaySend(const Options& options, const QString& user);
[[nodiscard]] Message NotManagerMessage();

/// The refusal when somebody else is sending the campaign.
[[nodiscard]] Message ClaimedMessage(const ClaimHolder& holder);

/// Checks for missing templates, and for rows to send.
/// \return the refusal; nothing when the run may go on
[[nodiscard]] std::optional<Message> CheckTemplates(const CounterValues& counters, const MailshotTemplates& templates);

/// The question before a run whose templates are probably wrong: with unknown merge fields, or an e-mail without a
/// subject. No, the default, prevents the run.
/// \param texts, emails  whether the run sends texts and e-mails; templates of the other kinds are not checked
[[nodiscard]] std::optional<Message> TemplateQuestion(const MailshotTemplates& templates, bool texts, bool emails);

/// The question before letters are made whose text is probably wrong.
/// \param letter  its plain text
[[nodiscard]] std::optional<Message> LetterQuestion(const QString& letter);

/// Refuses a run when everything is processed already.
[[nodiscard]] std::optional<Message> CheckOutstanding(const CounterValues& counters);

/// Checks that the e-mails have a sender address and the texts an account.
[[nodiscard]] std::optional<Message> CheckAccounts(const CounterValues& counters, const Options& options);

/// Whether e-mails are sent through the mail server of the host product.
[[nodiscard]] bool IsHostMailServer(const Options& options, const ServiceSettings& service);
/// The notice about this, shown when the last tab is opened.
[[nodiscard]] std::optional<Message> HostMailServerNotice(const Options& options, const ServiceSettings& service);

/// The question before a run when some customers got one message of their row while the other one failed. Yes sends
/// them the whole row again, No (the default) only the missing message.
/// \param customers  number of different customers, at least 1
[[nodiscard]] Message DeliveredQuestion(int customers);

/// The question after three failures in a row of one server: Yes goes on, No (the default) pauses its channel.
/// \param failure  the last failure
[[nodiscard]] Message GoOnQuestion(Channel channel, const QString& failure);

[[nodiscard]] Message CreditsUnknownMessage(const QString& supportTelephone);
/// The question before credits are spent: Yes sends everything, No only e-mails, Cancel nothing.
[[nodiscard]] Message CreditsQuestion(const CreditNeed& need);

/// Too few credits: the message for the user and the line for the results log.
struct CreditsRefusal {
  Message message;
  QString logLine;
};
[[nodiscard]] CreditsRefusal NotEnoughCredits(double credits, const CreditNeed& need);

}  // namespace qbx
