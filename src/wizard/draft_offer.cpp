#include "wizard/draft_offer.h"

#include <QFile>

#include "platform/safe_file.h"
#include "util/date_text.h"
#include "util/text.h"

namespace qbx {

namespace {

constexpr int kBeginning = 40;  // characters with which a text is named

std::vector<TextKind> Unsaved(const CampaignTexts& draft, const CampaignTexts& stored) {
  std::vector<TextKind> kinds;
  for (const TextKind kind : {TextKind::kLetter, TextKind::kEmail, TextKind::kSms})
    if (!draft.Same(kind, stored)) kinds.push_back(kind);
  return kinds;
}

/// A text such as "the text message "Dear {contact}, your MOT is due on {duedate}..."".
QString NameOf(TextKind kind, const CampaignTexts& texts) {
  if (kind == TextKind::kLetter) return QStringLiteral("the letter");
  const bool email = kind == TextKind::kEmail;
  QString what = email ? QStringLiteral("the e-mail") : QStringLiteral("the text message");
  const QString line = (!email                         ? texts.sms
                        : texts.emailSubject.isEmpty() ? texts.emailBody
                                                       : texts.emailSubject)
                           .simplified();
  if (line.isEmpty()) return what;
  const QString beginning = line.size() > kBeginning ? CutText(line, kBeginning) + QStringLiteral("...") : line;
  return QStringLiteral("%1 \"%2\"").arg(what, beginning);
}

QString CampaignOf(const Draft& draft, bool gone) {
  if (draft.campaignId < 1) return QStringLiteral("a campaign that was not saved yet");
  const QString name = QStringLiteral("the campaign \"%1\"").arg(draft.campaignName);
  return gone ? name + QStringLiteral(", which has been deleted since") : name;
}

Message OfferQuestion(const Draft& draft, const QString& campaign, const std::vector<TextKind>& unsaved) {
  QString names;
  for (const TextKind kind : unsaved)
    names += QStringLiteral("\r    ") + NameOf(kind, draft.texts);
  return {
      .text =
          QStringLiteral(
              "The program ended while you were writing for %1.\r\rNot saved, as of %2:%3\r\rTake up these texts again? \"No\" throws them away, \"Cancel\" asks again at the next start.")
              .arg(campaign, MinuteText(draft.written), names),
      .icon = MessageIcon::kQuestion,
      .buttons = MessageButtons::kYesNoCancel,
      .defaultAnswer = MessageAnswer::kYes};
}

}  // namespace

std::optional<TextKind> DraftOffer::Offer() {
  if (parts_.drafts.LeftBehind().empty()) return std::nullopt;
  const FileLock lock(parts_.drafts.OfferLock(), 0);
  if (!lock.Locked()) return std::nullopt;
  for (const Draft& draft : parts_.drafts.LeftBehind()) {
    const Found found = Look(draft);
    if (found.stored == Stored::kUnknown) break;
    const std::vector<TextKind> unsaved = Unsaved(draft.texts, found.texts);
    if (unsaved.empty()) {
      QFile::remove(draft.file);
      continue;
    }
    const QString campaign = CampaignOf(draft, found.stored == Stored::kGone);
    const MessageAnswer answer = diagnostics_.ui.ShowMessage(OfferQuestion(draft, campaign, unsaved));
    if (answer == MessageAnswer::kYes && TakeUp(draft, found.stored)) return unsaved.front();
    if (answer != MessageAnswer::kNo || !MayThrowAway()) break;
    QFile::remove(draft.file);
  }
  return std::nullopt;
}

DraftOffer::Found DraftOffer::Look(const Draft& draft) {
  if (draft.campaignId < 1) return {.stored = Stored::kGone, .texts = {}};
  Recordset row;
  if (parts_.statements.dbOpenRec(row, StoredCampaignStatement(draft.campaignId))) return {};
  if (row.Eof()) return {.stored = Stored::kGone, .texts = {}};
  return {.stored = Stored::kThere, .texts = TextsOf(row)};
}

bool DraftOffer::MayThrowAway() {
  return diagnostics_.ui.ShowMessage({.text = QStringLiteral("Throw the texts away for good?"),
                                      .icon = MessageIcon::kQuestion,
                                      .buttons = MessageButtons::kYesNo,
                                      .defaultAnswer = MessageAnswer::kNo}) == MessageAnswer::kYes;
}

bool DraftOffer::TakeUp(const Draft& draft, Stored stored) {
  if (stored == Stored::kThere) {
    const auto load = [&] { return parts_.storage.LoadCampaign(draft.campaignId) ? draft.campaignId : 0; };
    if (!parts_.settings.LoadCampaignSettings(load)) return false;
  } else {
    parts_.steps.StartNewCampaign();
  }
  parts_.keeper.Saved();
  PutTexts(draft.texts, parts_.state);
  parts_.campaign.CampaignChanged = true;
  if (parts_.keeper.Write() && parts_.keeper.File() != draft.file) QFile::remove(draft.file);
  return true;
}

}  // namespace qbx
