#include "wizard/result_edits.h"

namespace qbx {
namespace {

Message OtherRowsMessage() {
  return {
      .text = QStringLiteral(
          "The results of this campaign have not been read, so nothing was changed.\r\rPlease leave this page and open it again."),
      .icon = MessageIcon::kExclamation};
}

}  // namespace

bool ResultEdits::MayEdit() {
  const std::optional<Message> refusal = parts_.guard.LookAtClaim(parts_.campaign.record.ID);
  if (refusal) diagnostics_.ui.ShowMessage(*refusal);
  return !refusal;
}

bool ResultEdits::MayEditShown() {
  if (!parts_.results.OutOfDate(parts_.campaign.record.ID)) return MayEdit();
  diagnostics_.ui.ShowMessage(OtherRowsMessage());
  return false;
}

/// Options that could not be read before are read again first.
bool ResultEdits::ConsentKnown() {
  if (parts_.options.ReadFailed) parts_.loadOptions();
  if (!parts_.options.ReadFailed) return true;
  diagnostics_.ui.ShowMessage({.text = QString::fromLatin1(kOptionsUnreadText),
                               .icon = MessageIcon::kExclamation,
                               .reason = Reason::kOptionsUnread});
  return false;
}

void ResultEdits::ClickCell(const QString& column, qint64 recordId) {
  if (ResultFlags::IsFlag(column) && MayEditShown()) parts_.flags.ClickCell(column, recordId);
}

bool ResultEdits::ApplySendMethods(const SendMethods& methods) {
  if (!MayEditShown() || !ConsentKnown()) return false;
  const int campaign = parts_.campaign.record.ID;
  SetSendMethods(parts_.statements, methods, campaign, parts_.options);
  parts_.results.DisplayResults(campaign);
  return true;
}

}  // namespace qbx
