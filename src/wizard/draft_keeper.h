// Keeping unsaved texts on disk as a draft.

#pragma once

#include <QTimer>
#include <future>

#include "campaigns/campaign_record.h"
#include "diagnostics/diagnostics.h"
#include "wizard/drafts.h"

namespace qbx {

/// Writes the texts of the wizard to a draft while they differ from the saved ones: `kPause` after the last change, and
/// every `kLongest` while changes go on. Another thread writes the file, so a slow disk does not hold up the user. When
/// the program ends normally this object is destroyed and deletes the draft.
class DraftKeeper {
 public:
  static constexpr int kPause = 2000;     ///< milliseconds without a change
  static constexpr int kLongest = 10000;  ///< milliseconds from the first change that is not on disk

  DraftKeeper(const WizardState& state, const CurrentCampaign& campaign, const Drafts& drafts, Diagnostics diagnostics);
  ~DraftKeeper();
  DraftKeeper(const DraftKeeper&) = delete;
  DraftKeeper& operator=(const DraftKeeper&) = delete;

  /// The wizard's texts were just stored or loaded, or a new campaign was begun: the draft is deleted.
  void Saved();
  /// The user changed a text.
  void Changed();
  /// Sets a function that is called before the texts are compared, for an editor that does not copy every key into the
  /// wizard's state.
  void BeforeWriting(std::function<void()> called) { beforeWriting_ = std::move(called); }
  /// While one of these lives nothing is written and the editors are not asked: a campaign is being loaded into the
  /// wizard, so some texts and controls still belong to the campaign before.
  class Hold {
   public:
    explicit Hold(DraftKeeper& keeper) : keeper_(keeper) { ++keeper_.holds_; }
    ~Hold() { --keeper_.holds_; }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

   private:
    DraftKeeper& keeper_;
  };
  /// Writes changes at once and waits for the file. Not to be called during a `Hold`.
  /// \return whether the draft holds the present texts
  bool Write();
  /// The path of the draft; empty when there is none.
  [[nodiscard]] const QString& File() const { return file_; }

 private:
  void Begin();
  /// Waits for the file that is being written. A failure is logged.
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
  QString file_;  ///< empty when there is no draft
  std::future<QString> writing_;
  QString problem_;  ///< of the last writing
};

}  // namespace qbx
