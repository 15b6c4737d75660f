#include "wizard/result_edits.h"

namespace qbx {

bool ResultEdits::MayEdit() {
  const std::optional<Message> refusal = parts_.guard.LookAtClaim(parts_.campaign.record.ID);
  if (refusal) diagnostics_.ui.ShowMessage(*refusal);
  return !refusal;
}

void ResultEdits::ClickCell(const QString& column, qint64 recordId) {
  if (ResultFlags::IsFlag(column) && MayEdit()) parts_.flags.ClickCell(column, recordId);
}

bool ResultEdits::ApplySendMethods(const SendMethods& methods) {
  if (!MayEdit()) return false;
  const int campaign = parts_.campaign.record.ID;
  SetSendMethods(parts_.statements, methods, campaign, parts_.options);
  parts_.results.DisplayResults(campaign);
  return true;
}

}  // namespace qbx
