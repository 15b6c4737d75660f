// Offering the texts that were being written when the program was killed.

#pragma once

#include <optional>

#include "wizard/campaign_settings.h"
#include "wizard/draft_keeper.h"
#include "wizard/steps.h"

namespace qbx {

/// Asks at the start whether to continue with a draft. No method throws.
class DraftOffer {
 public:
  /// What it works with, by reference.
  struct Parts {
    const Drafts& drafts;
    DraftKeeper& keeper;
    Statements& statements;
    CampaignStorage& storage;
    CurrentCampaign& campaign;
    WizardState& state;
    CampaignSettings& settings;
    WizardSteps& steps;
  };
  DraftOffer(const Parts& parts, Diagnostics diagnostics) : parts_(parts), diagnostics_(diagnostics) {}

  /// Asks about the newest draft. A draft whose texts are stored by now is removed without a question. When the user
  /// throws one away (which is confirmed), the next draft is offered. Every other draft stays until the next start;
  /// while another program asks about the drafts, all of them stay.
  /// \return the first text that is not saved, if the wizard now holds the campaign of a draft with its texts; the
  ///         campaign then counts as changed
  [[nodiscard]] std::optional<TextKind> Offer();

 private:
  enum class Stored { kUnknown, kGone, kThere };
  struct Found {
    Stored stored = Stored::kUnknown;
    CampaignTexts texts;
  };
  /// Reads the stored campaign of a draft.
  [[nodiscard]] Found Look(const Draft& draft);
  [[nodiscard]] bool MayThrowAway();
  [[nodiscard]] bool TakeUp(const Draft& draft, Stored stored);

  Parts parts_;
  Diagnostics diagnostics_;
};

}  // namespace qbx
