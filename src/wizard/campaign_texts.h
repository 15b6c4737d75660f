// The texts of step 4, read from and written to the wizard.

#pragma once

#include <QString>

#include "database/recordset.h"
#include "wizard/wizard_state.h"

namespace qbx {

/// In the order of the tabs on step 4.
enum class TextKind { kLetter, kEmail, kSms };

struct CampaignTexts {
  QString letter;  ///< RTF
  QString emailSubject;
  QString emailBody;
  QString sms;

  bool operator==(const CampaignTexts&) const = default;
  [[nodiscard]] bool Same(TextKind kind, const CampaignTexts& other) const;
};

[[nodiscard]] CampaignTexts TextsOf(const WizardState& state);
/// The statement that reads a stored campaign; `TextsOf` takes its row.
[[nodiscard]] QString StoredCampaignStatement(int campaignId);
[[nodiscard]] CampaignTexts TextsOf(const Recordset& row);
void PutTexts(const CampaignTexts& texts, WizardState& state);

}  // namespace qbx
