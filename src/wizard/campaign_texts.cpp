#include "wizard/campaign_texts.h"

#include "database/statements.h"

namespace qbx {

bool CampaignTexts::Same(TextKind kind, const CampaignTexts& other) const {
  switch (kind) {
    case TextKind::kLetter:
      return letter == other.letter;
    case TextKind::kEmail:
      return emailSubject == other.emailSubject && emailBody == other.emailBody;
    case TextKind::kSms:
      break;
  }
  return sms == other.sms;
}

CampaignTexts TextsOf(const WizardState& state) {
  return {.letter = state.rtfLetter,
          .emailSubject = state.txtEmailSubject,
          .emailBody = state.txtEmailBody,
          .sms = state.txtSMS};
}

QString StoredCampaignStatement(int campaignId) {
  return QStringLiteral("proc_selp_Marketing_Campaign (%1)").arg(campaignId);
}

CampaignTexts TextsOf(const Recordset& row) {
  const auto text = [&row](const char* column) { return Statements::sysIsNull(row, QLatin1String(column)).ToText(); };
  return {.letter = text("Letter"),
          .emailSubject = text("Email_Subject"),
          .emailBody = text("Email_Body"),
          .sms = text("SMS")};
}

void PutTexts(const CampaignTexts& texts, WizardState& state) {
  state.rtfLetter = texts.letter;
  state.txtEmailSubject = texts.emailSubject;
  state.txtEmailBody = texts.emailBody;
  state.txtSMS = texts.sms;
}

}  // namespace qbx
