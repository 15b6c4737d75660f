// Setting the three send flags of a whole campaign by rules.

#pragma once

#include <QString>
#include <QStringList>

#include "database/statements.h"

namespace qbx {

struct Options;

/// The rules for each way of sending, in the order of the lists; a rule's number is its position.
[[nodiscard]] QStringList SmsRules();
[[nodiscard]] QStringList EmailRules();
[[nodiscard]] QStringList LetterRules();

/// A sentence for each rule about its effect. Where the options ask for consent, no rule ticks a row without it.
[[nodiscard]] QStringList SmsRuleTips();
[[nodiscard]] QStringList EmailRuleTips();
[[nodiscard]] QStringList LetterRuleTips();

/// The chosen positions in the lists above. A position that the list lacks, such as -1, leaves the flag alone.
struct SendMethods {
  int sms = -1;
  int email = -1;
  int letter = -1;
};

/// Applies the rules to every row of a campaign, in batches. A later rule sees the flags that an earlier one set. Each
/// batch is a transaction, so an "except" rule never leaves everybody flagged. Batches that ran stay when a later one
/// fails (already reported).
/// \return true when every batch ran. None runs when the options could not be read (kOptionsUnreadText), because
///         consent would be unknown
bool SetSendMethods(Statements& statements, const SendMethods& methods, int campaignId, const Options& options);

}  // namespace qbx
