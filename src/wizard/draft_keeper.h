// Keeping on disk what is being written.

#pragma once

#include <QTimer>
#include <future>

#include "campaigns/campaign_record.h"
#include "diagnostics/diagnostics.h"
#include "wizard/drafts.h"

namespace qbx {

/// Writes the texts of the wizard to a draft while they differ from what is saved: `kPause` after the last change, and every `kLongest` while changes go
/// on. The file is written on another thread, so that a slow disk holds up nobody who types. An orderly end of the program destroys this object, and with it
/// goes the draft.
class DraftKeeper {
 public:
  static constexpr int kPause = 2000;     ///< milliseconds without a change
  static constexpr int kLongest = 10000;  ///< milliseconds from the first change that is not on disk

  DraftKeeper(const WizardState& state, const CurrentCampaign& campaign, const Drafts& drafts, Diagnostics diagnostics);
  ~DraftKeeper();
  DraftKeeper(const DraftKeeper&) = delete;
  DraftKeeper& operator=(const DraftKeeper&) = delete;

  /// The wizard's texts are those that are saved: they have just been stored or loaded, or a new campaign has begun. The draft goes.
  void Saved();
  /// The user changed a text.
  void Changed();
  /// Called before the texts are looked at, for an editor that does not put every key into the wizard's state.
  void BeforeWriting(std::function<void()> called) { beforeWriting_ = std::move(called); }
  /// Nothing is written, and the editors are not asked, while one of these lives: a campaign is being put into the wizard, whose texts and controls are partly
  /// those of the one before.
  class Hold {
   public:
    explicit Hold(DraftKeeper& keeper) : keeper_(keeper) { ++keeper_.holds_; }
    ~Hold() { --keeper_.holds_; }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

   private:
    DraftKeeper& keeper_;
  };
  /// Writes what changed at once, and waits for it; not to be called while it is held.
  /// \return whether the draft holds the texts as they stand
  bool Write();
  /// Where the draft is; empty while there is none.
  [[nodiscard]] const QString& File() const { return file_; }

 private:
  void Begin();
  /// Waits for the file that is being written; a failure is logged.
  void End();
  void Remove();

  const WizardState& state_;
  const CurrentCampaign& campaign_;
  const Drafts& drafts_;
  Diagnostics diagnostics_;
  std::function<void()> beforeWriting_;
  int holds_ = 0;
  QTimer pause_;
  QTimer longest_;
  CampaignTexts saved_;
  CampaignTexts written_;
  QString file_;  ///< empty: there is no draft
  std::future<QString> writing_;
  QString problem_;  ///< of the last writing
};

}  // namespace qbx
