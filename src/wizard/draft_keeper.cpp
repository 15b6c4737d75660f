#include "wizard/draft_keeper.h"

#include <QFile>
#include <chrono>

#include "platform/safe_file.h"

namespace qbx {

DraftKeeper::DraftKeeper(const WizardState& state, const CurrentCampaign& campaign, const Drafts& drafts,
                         Diagnostics diagnostics)
    : state_(state), campaign_(campaign), drafts_(drafts), diagnostics_(diagnostics) {
  pause_.setInterval(kPause);
  longest_.setInterval(kLongest);
  for (QTimer* timer : {&pause_, &longest_}) {
    timer->setSingleShot(true);
    timer->callOnTimeout([this] { Begin(); });
  }
}

DraftKeeper::~DraftKeeper() {
  Remove();
}

void DraftKeeper::Saved() {
  saved_ = TextsOf(state_);
  Remove();
}

void DraftKeeper::Changed() {
  pause_.start();
  if (!longest_.isActive()) longest_.start();
}

void DraftKeeper::Begin() {
  if (holds_ > 0) return Changed();
  if (writing_.valid() && writing_.wait_for(std::chrono::seconds(0)) != std::future_status::ready) return Changed();
  End();
  pause_.stop();
  longest_.stop();
  if (beforeWriting_) beforeWriting_();
  const CampaignTexts texts = TextsOf(state_);
  if (texts == saved_) return Remove();
  if (texts == written_ && !file_.isEmpty()) return;
  if (file_.isEmpty()) file_ = drafts_.File(campaign_.record.ID);
  written_ = texts;
  const Draft draft{.file = file_,
                    .campaignId = campaign_.record.ID,
                    .campaignName = campaign_.record.Campaign_Name,
                    .written = diagnostics_.clock.Now(),
                    .texts = texts};
  writing_ = std::async(std::launch::async,
                        [draft, &drafts = drafts_] { return ReplaceFile(draft.file, drafts.Bytes(draft)); });
}

void DraftKeeper::End() {
  if (!writing_.valid()) return;
  const QString problem = writing_.get();
  if (!problem.isEmpty()) {
    written_ = saved_;  // makes the next change try again
    if (problem != problem_) diagnostics_.log.WriteLog(QStringLiteral("Draft: ") + problem);
  }
  problem_ = problem;
}

bool DraftKeeper::Write() {
  End();
  Begin();
  End();
  return problem_.isEmpty();
}

void DraftKeeper::Remove() {
  End();
  pause_.stop();
  longest_.stop();
  if (!file_.isEmpty()) QFile::remove(file_);
  file_.clear();
  written_ = {};
}

}  // namespace qbx
