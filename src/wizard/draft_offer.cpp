#include "wizard/draft_offer.h"

#include <QFile>

#include "util/text.h"

namespace qbx {

namespace {

constexpr int kBeginning = 40;  // characters of a text that is named

/// "the text message "Dear {contact}, your MOT ..."", or nothing when the text is as it is stored.
void Name(QStringList& names, const QString& what, const QString& text, bool changed) {
  if (!changed) return;
  const QString line = text.simplified();
  if (line.isEmpty())
    names << what;
  else
    names << QStringLiteral("%1 \"%2\"")
                 .arg(what, line.size() > kBeginning ? CutText(line, kBeginning) + QStringLiteral("...") : line);
}

QString WhatChanged(const CampaignTexts& draft, const CampaignTexts& stored) {
  QStringList names;
  Name(names, QStringLiteral("the letter"), {}, draft.letter != stored.letter);
  Name(names, QStringLiteral("the e-mail"), draft.emailSubject.isEmpty() ? draft.emailBody : draft.emailSubject,
       draft.emailSubject != stored.emailSubject || draft.emailBody != stored.emailBody);
  Name(names, QStringLiteral("the text message"), draft.sms, draft.sms != stored.sms);
  return names.join(QStringLiteral(", "));
}

QString CampaignOf(const Draft& draft, bool gone) {
  if (draft.campaignId < 1) return QStringLiteral("a campaign that was not saved yet");
  const QString name = QStringLiteral("the campaign \"%1\"").arg(draft.campaignName);
  return gone ? name + QStringLiteral(", which has been deleted since") : name;
}

Message OfferQuestion(const Draft& draft, const QString& campaign, const QString& changed) {
  return {
      .text =
          QStringLiteral(
              "The program ended while you were writing for %1.\r\rNot saved are, as of %2: %3.\r\rTake up these texts again? \"No\" throws them away, \"Cancel\" asks again at the next start.")
              .arg(campaign, draft.written.toString(QStringLiteral("dd/MM/yyyy HH:mm")), changed),
      .icon = MessageIcon::kQuestion,
      .buttons = MessageButtons::kYesNoCancel,
      .defaultAnswer = MessageAnswer::kYes};
}

}  // namespace

bool DraftOffer::Offer() {
  for (const Draft& draft : parts_.drafts.LeftBehind()) {
    const Found found = Look(draft);
    if (found.stored == Stored::kUnknown) return false;
    if (draft.texts == found.texts) {
      QFile::remove(draft.file);
      continue;
    }
    const QString campaign = CampaignOf(draft, found.stored == Stored::kGone);
    switch (diagnostics_.ui.ShowMessage(OfferQuestion(draft, campaign, WhatChanged(draft.texts, found.texts)))) {
      case MessageAnswer::kYes:
        return TakeUp(draft, found.stored);
      case MessageAnswer::kNo:
        if (!MayThrowAway()) return false;
        QFile::remove(draft.file);
        break;
      default:
        return false;
    }
  }
  return false;
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
