// Setting the three send flags of a whole campaign by rules.

#pragma once

#include <QString>
#include <QStringList>

#include "database/statements.h"

namespace qbx {

struct Options;

/// The rules that can be chosen for each way of sending, in list order; the position is the rule's number.
[[nodiscard]] QStringList SmsRules();
[[nodiscard]] QStringList EmailRules();
[[nodiscard]] QStringList LetterRules();

/// What each of them does to the rows, in a sentence. Where the options ask for consent, no rule ticks a row without it.
[[nodiscard]] QStringList SmsRuleTips();
[[nodiscard]] QStringList EmailRuleTips();
[[nodiscard]] QStringList LetterRuleTips();

/// What was chosen: positions in the lists above. -1, or any other position a list does not have, leaves the flag
/// alone.
struct SendMethods {
  int sms = -1;
  int email = -1;
  int letter = -1;
};

/// Applies the rules to every row of a campaign, one batch after the other, so that a later rule sees the flags that an
/// earlier one set. Each batch is a transaction, so that an "except" rule never leaves everybody flagged; none spans them: a batch that ran stays,
/// also when another fails (already reported).
/// \return true when every batch ran; none does while the options could not be read (kOptionsUnreadText), since consent would be unknown
bool SetSendMethods(Statements& statements, const SendMethods& methods, int campaignId, const Options& options);

}  // namespace qbx
