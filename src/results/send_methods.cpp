#include "results/send_methods.h"

#include <span>

#include "settings/options.h"

namespace qbx {
namespace {

/// What a rule does to the flag of its channel.
struct Rule {
  const char* caption;
  int value;              ///< of its first statement
  const char* condition;  ///< in front of the campaign's
  const char* except;     ///< not null: a second statement clears the flag of the rows with this condition
};

struct Channel {
  const char* flag;
  const char* consentColumn;
  std::span<const Rule> rules;
};

constexpr Rule kSmsRules[] = {
    {"All Customers with a Mobile No", 1, "(Mobile <> '') AND (Len(Mobile) > 5) AND", nullptr},
    {"No Customers", 0, "", nullptr},
    {"All except when Letter or Email", 1, "", "(Send_Letter = 1 OR Send_Email = 1) AND"},
    {"All except when Letter", 1, "", "(Send_Letter = 1) AND"},
    {"All except when Email", 1, "", "(Send_Email = 1) AND"},
    {"All customers without an Email Address", 1,
     " ((Email = '') OR (LEN(Email) < 6) OR (CHARINDEX('@', Email) < 2)) AND (Mobile <> '') AND", nullptr},
};

constexpr Rule kEmailRules[] = {
    {"All Customers with an Email Address", 1, "(Email <> '') AND (CharIndex('@', Email) > 1) AND", nullptr},
    {"No Customers", 0, "", nullptr},
    {"All except when Letter or SMS", 1, "", "(Send_Letter = 1 OR Send_SMS = 1) AND"},
    {"All except when Letter", 1, "", "(Send_Letter = 1) AND"},
    {"All except when SMS", 1, "", "(Send_SMS = 1) AND"},
};

constexpr Rule kLetterRules[] = {
    {"All Customers", 1, "", nullptr},
    {"No Customers", 0, "", nullptr},
    {"All except when Email or SMS", 1, "", "(Send_Email = 1 OR Send_SMS = 1) AND"},
    {"All except when Email", 1, "", "(Send_Email = 1) AND"},
    {"All except when SMS", 1, "", "(Send_SMS = 1) AND"},
};

constexpr Channel kSms{"Send_SMS", "Can_Send_SMS", kSmsRules};
constexpr Channel kEmail{"Send_Email", "Can_Send_Email", kEmailRules};
constexpr Channel kLetter{"Send_Letter", "Can_Send_Letter", kLetterRules};

QStringList Captions(const Channel& channel) {
  QStringList captions;
  for (const Rule& rule : channel.rules)
    captions += QString::fromLatin1(rule.caption);
  return captions;
}

QString Statement(const Channel& channel, int value, const char* condition, int campaignId) {
  return u"UPDATE [Campaign Results] SET %1 = %2 WHERE %3 CampaignID = %4"_qs.arg(
      QString::fromLatin1(channel.flag), QString::number(value), QString::fromLatin1(condition),
      QString::number(campaignId));
}

QString Batch(const Channel& channel, const Rule& rule, int campaignId, bool askConsent) {
  QString batch = Statement(channel, rule.value, rule.condition, campaignId);
  if (rule.value == 1 && askConsent)
    batch += u" AND IsNull(%1, 0) = 1"_qs.arg(QString::fromLatin1(channel.consentColumn));
  if (rule.except) batch += u"; "_qs + Statement(channel, 0, rule.except, campaignId);
  return batch;
}

/// The statements for a choice: one batch for each channel with a rule, in the order SMS, e-mail, letter. An "except" rule is two statements
/// separated by "; ".
QStringList SendMethodBatches(const SendMethods& methods, int campaignId, const Options& options) {
  const bool messagesAsk = options.Using_Vrelo && options.Only_Send_Comms_When_Opted_In;
  struct Choice {
    const Channel& channel;
    int rule;
    bool askConsent;
  };
  QStringList batches;
  for (const auto& [channel, rule, askConsent] :
       {Choice{kSms, methods.sms, messagesAsk}, Choice{kEmail, methods.email, messagesAsk},
        Choice{kLetter, methods.letter, options.Using_Vrelo}}) {
    if (rule < 0 || rule >= static_cast<int>(channel.rules.size())) continue;
    batches += Batch(channel, channel.rules[static_cast<size_t>(rule)], campaignId, askConsent);
  }
  return batches;
}

}  // namespace

QStringList SmsRules() {
  return Captions(kSms);
}

QStringList EmailRules() {
  return Captions(kEmail);
}

QStringList LetterRules() {
  return Captions(kLetter);
}

bool SetSendMethods(Statements& statements, const SendMethods& methods, int campaignId, const Options& options) {
  if (options.ReadFailed) return false;
  bool allRan = true;
  for (const QString& batch : SendMethodBatches(methods, campaignId, options)) {
    if (!statements.dbExecuteWhole(batch).Ok()) allRan = false;
  }
  return allRan;
}

}  // namespace qbx
