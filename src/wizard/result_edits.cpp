#include "wizard/result_edits.h"

namespace qbx {
namespace {

Message OtherRowsMessage() {
  return {.text = QStringLiteral("The results of this campaign have not been read, so nothing was changed.\r\rPlease "
                                 "leave this page and open it again."),
          .icon = MessageIcon::kExclamation};
}

}  // namespace

bool ResultEdits::MayEdit() {
  const int campaign = parts_.campaign.record.ID;
  const std::optional<Message> refusal =
      parts_.results.CampaignId() == campaign ? parts_.guard.LookAtClaim(campaign) : OtherRowsMessage();
  if (refusal) diagnostics_.ui.ShowMessage(*refusal);
  return !refusal;
}

/// Options that could not be read before are read again first.
bool ResultEdits::ConsentKnown() {
  if (parts_.options.ReadFailed) parts_.loadOptions();
  if (!parts_.options.ReadFailed) return true;
  diagnostics_.ui.ShowMessage({.text = QString::fromLatin1(kOptionsUnreadText), .icon = MessageIcon::kExclamation});
  return false;
}

void ResultEdits::ClickCell(const QString& column, qint64 recordId) {
  if (ResultFlags::IsFlag(column) && MayEdit()) parts_.flags.ClickCell(column, recordId);
}

bool ResultEdits::ApplySendMethods(const SendMethods& methods) {
  if (!MayEdit() || !ConsentKnown()) return false;
  const int campaign = parts_.campaign.record.ID;
  SetSendMethods(parts_.statements, methods, campaign, parts_.options);
  parts_.results.DisplayResults(campaign);
  return true;
}

}  // namespace qbx
