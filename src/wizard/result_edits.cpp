#include "wizard/result_edits.h"

namespace qbx {
namespace {

Message OtherRowsMessage() {
  return {
      .text = QStringLiteral(
          "The results of this campaign have not been read, so nothing was changed.\r\rPlease leave this page and open it again."),
      .icon = MessageIcon::kExclamation};
}

/// Names the flag that a click flipped, for Undo.
QString FlippedText(const QString& column) {
  return QStringLiteral("1 row changed: ") + QString(column).replace(u'_', u' ');
}

}  // namespace

ResultEdits::ResultEdits(Parts parts, Diagnostics diagnostics) : parts_(std::move(parts)), diagnostics_(diagnostics) {
  parts_.flags.Around([this](const QString& column, qint64 recordId, const std::function<bool()>& flip) {
    // The question about Processed may have been open for a long time.
    if (!MayEdit()) return false;
    std::optional<RowChanges::SeenFlag> seen;
    if (const std::optional<bool> ticked = parts_.results.ShownFlag(recordId, column)) seen = {column, *ticked};
    return parts_.changes.Keep(parts_.results.CampaignId(), recordId, seen, FlippedText(column), flip);
  });
  parts_.results.OnOtherRows([this] { parts_.changes.Forget(); });
}

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

/// Options that could not be read earlier are first read again.
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
  parts_.changes.Forget();
  SetSendMethods(parts_.statements, methods, campaign, parts_.options);
  parts_.results.DisplayResults(campaign);
  return true;
}

bool ResultEdits::DeleteRow(qint64 recordId, const std::function<bool()>& remove) {
  return parts_.changes.KeepTakenOut(parts_.results.CampaignId(), recordId, remove);
}

RowChange ResultEdits::SetFlag(Channel flag, bool ticked, const std::vector<qint64>& rows) {
  return Change("SetFlag", rows, [&](int campaign) { return parts_.changes.SetFlag(campaign, flag, ticked, rows); });
}

RowChange ResultEdits::TakeOut(const std::vector<qint64>& rows) {
  return Change("TakeOut", rows, [&](int campaign) { return parts_.changes.TakeOut(campaign, rows); });
}

RowChange ResultEdits::Undo() {
  if (LastChange().isEmpty()) return {};
  return Change("Undo", {}, [this](int campaign) { return parts_.changes.Undo(campaign); });
}

/// Shown rows are read again even when they were left alone: another desk may have changed them.
RowChange ResultEdits::Change(const char* routine, const std::vector<qint64>& rows,
                              const std::function<RowChange(int campaign)>& change) {
  RowChange done;
  if (!MayEditShown()) return done;
  diagnostics_.ui.SetBusy(true);
  bool failed = false;
  try {
    done = change(parts_.campaign.record.ID);
  } catch (const DatabaseError& error) {
    failed = true;
    parts_.statements.ShowFailure(0, QString::fromLatin1(routine), error);
  }
  diagnostics_.ui.SetBusy(false);
  if (failed) return {};
  if (done.refusal) {
    diagnostics_.ui.ShowMessage(*done.refusal);
  } else if (done.readAgain) {
    parts_.results.RefreshResults();
  } else {
    std::vector<qint64> shown = rows;
    shown.insert(shown.end(), done.changed.begin(), done.changed.end());
    parts_.results.RefreshRows(shown);
  }
  return done;
}

}  // namespace qbx
