// What is checked before a mailshot sends anything.

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

/// Somebody else is sending the campaign.
[[nodiscard]] Message ClaimedMessage(const ClaimHolder& holder);

/// Templates that are missing, or nothing to do at all.
/// \return the message that refuses the run, nothing when it may go on
[[nodiscard]] std::optional<Message> CheckTemplates(const CounterValues& counters, const MailshotTemplates& templates);

/// The question before a run whose templates would send what nobody meant: fields that are none, an e-mail without a subject. No, the default, keeps the
/// run from starting.
/// \param texts, emails  whether the run sends such; the templates of the others do not count
[[nodiscard]] std::optional<Message> TemplateQuestion(const MailshotTemplates& templates, bool texts, bool emails);

/// The same of letters that are about to be made.
/// \param letter  its plain text
[[nodiscard]] std::optional<Message> LetterQuestion(const QString& letter);

/// Everything that was asked for is processed already.
[[nodiscard]] std::optional<Message> CheckOutstanding(const CounterValues& counters);

/// Sender address of the e-mails, account of the texts.
[[nodiscard]] std::optional<Message> CheckAccounts(const CounterValues& counters, const Options& options);

/// Whether e-mails are set up to go through the mail server of the host product.
[[nodiscard]] bool IsHostMailServer(const Options& options, const ServiceSettings& service);
/// What the user is told then, when the last tab is opened.
[[nodiscard]] std::optional<Message> HostMailServerNotice(const Options& options, const ServiceSettings& service);

/// The question before a run when the other half of what some customers got has failed. Yes sends them the whole row again, No (the default)
/// only what is missing.
/// \param customers  different customers, at least 1
[[nodiscard]] Message DeliveredQuestion(int customers);

/// The question when a server has failed three times in a row: Yes goes on, No (the default) pauses its channel.
/// \param failure  what happened the last time
[[nodiscard]] Message GoOnQuestion(Channel channel, const QString& failure);

[[nodiscard]] Message CreditsUnknownMessage(const QString& supportTelephone);
/// The question before credits are spent: Yes sends all, No e-mails only, Cancel nothing.
[[nodiscard]] Message CreditsQuestion(const CreditNeed& need);

/// Too few credits: what the user is told, and the line of the results log.
struct CreditsRefusal {
  Message message;
  QString logLine;
};
[[nodiscard]] CreditsRefusal NotEnoughCredits(double credits, const CreditNeed& need);

}  // namespace qbx
