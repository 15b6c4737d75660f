#include "results/send_methods.h"

#include <span>

#include "results/flag_columns.h"
#include "settings/options.h"

namespace qbx {
namespace {

/// What a rule does to the flag of its channel.
struct Rule {
  const char* caption;
  const char* tip;
  int value;              ///< set by its first statement
  const char* condition;  ///< added before the campaign's condition
  const char* except;     ///< unless null: a second statement clears the flag of the rows with this condition
};

struct Channel {
  QLatin1String flag;
  const char* consentColumn;
  std::span<const Rule> rules;
};

constexpr Rule kSmsRules[] = {
    {"All Customers with a Mobile No", "Ticks Send SMS in the rows with a mobile number of more than five characters.",
     1, "(Mobile <> '') AND (Len(Mobile) > 5) AND", nullptr},
    {"No Customers", "Unticks Send SMS in every row.", 0, "", nullptr},
    {"All except when Letter or Email",
     "Ticks Send SMS in every row, and unticks it where Send Letter or Send Email is ticked.", 1, "",
     "(Send_Letter = 1 OR Send_Email = 1) AND"},
    {"All except when Letter", "Ticks Send SMS in every row, and unticks it where Send Letter is ticked.", 1, "",
     "(Send_Letter = 1) AND"},
    {"All except when Email", "Ticks Send SMS in every row, and unticks it where Send Email is ticked.", 1, "",
     "(Send_Email = 1) AND"},
    {"All customers without an Email Address",
     "Ticks Send SMS in the rows that have a mobile number and no e-mail address.", 1,
     " ((Email = '') OR (LEN(Email) < 6) OR (CHARINDEX('@', Email) < 2)) AND (Mobile <> '') AND", nullptr},
};

constexpr Rule kEmailRules[] = {
    {"All Customers with an Email Address", "Ticks Send Email in the rows with an e-mail address.", 1,
     "(Email <> '') AND (CharIndex('@', Email) > 1) AND", nullptr},
    {"No Customers", "Unticks Send Email in every row.", 0, "", nullptr},
    {"All except when Letter or SMS",
     "Ticks Send Email in every row, and unticks it where Send Letter or Send SMS is ticked.", 1, "",
     "(Send_Letter = 1 OR Send_SMS = 1) AND"},
    {"All except when Letter", "Ticks Send Email in every row, and unticks it where Send Letter is ticked.", 1, "",
     "(Send_Letter = 1) AND"},
    {"All except when SMS", "Ticks Send Email in every row, and unticks it where Send SMS is ticked.", 1, "",
     "(Send_SMS = 1) AND"},
};

constexpr Rule kLetterRules[] = {
    {"All Customers", "Ticks Send Letter in every row.", 1, "", nullptr},
    {"No Customers", "Unticks Send Letter in every row.", 0, "", nullptr},
    {"All except when Email or SMS",
     "Ticks Send Letter in every row, and unticks it where Send Email or Send SMS is ticked.", 1, "",
     "(Send_Email = 1 OR Send_SMS = 1) AND"},
    {"All except when Email", "Ticks Send Letter in every row, and unticks it where Send Email is ticked.", 1, "",
     "(Send_Email = 1) AND"},
    {"All except when SMS", "Ticks Send Letter in every row, and unticks it where Send SMS is ticked.", 1, "",
     "(Send_SMS = 1) AND"},
};

constexpr Channel kSms{kSendSmsFlag, "Can_Send_SMS", kSmsRules};
constexpr Channel kEmail{kSendEmailFlag, "Can_Send_Email", kEmailRules};
constexpr Channel kLetter{kSendLetterFlag, "Can_Send_Letter", kLetterRules};

QStringList Texts(const Channel& channel, const char* Rule::*text) {
  QStringList texts;
  for (const Rule& rule : channel.rules)
    texts += QString::fromLatin1(rule.*text);
  return texts;
}

QString Statement(const Channel& channel, int value, const char* condition, int campaignId) {
  return QStringLiteral("UPDATE [Campaign Results] SET %1 = %2 WHERE %3 CampaignID = %4")
      .arg(channel.flag, QString::number(value), QString::fromLatin1(condition), QString::number(campaignId));
}

QString Batch(const Channel& channel, const Rule& rule, int campaignId, bool askConsent) {
  QString batch = Statement(channel, rule.value, rule.condition, campaignId);
  if (rule.value == 1 && askConsent)
    batch += QStringLiteral(" AND IsNull(%1, 0) = 1").arg(QString::fromLatin1(channel.consentColumn));
  if (rule.except) batch += QStringLiteral("; ") + Statement(channel, 0, rule.except, campaignId);
  return batch;
}

/// The statements for a choice: one batch for each channel with a rule, in the order SMS, e-mail, letter. An "except"
/// rule has two statements separated by "; ".
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
  return Texts(kSms, &Rule::caption);
}

QStringList SmsRuleTips() {
  return Texts(kSms, &Rule::tip);
}

QStringList EmailRules() {
  return Texts(kEmail, &Rule::caption);
}

QStringList EmailRuleTips() {
  return Texts(kEmail, &Rule::tip);
}

QStringList LetterRules() {
  return Texts(kLetter, &Rule::caption);
}

QStringList LetterRuleTips() {
  return Texts(kLetter, &Rule::tip);
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
