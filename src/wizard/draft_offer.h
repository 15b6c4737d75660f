// Offering what was being written when the program was killed.

#pragma once

#include <optional>

#include "wizard/campaign_settings.h"
#include "wizard/draft_keeper.h"
#include "wizard/steps.h"

namespace qbx {

/// Asks at the start whether to go on with a draft. No method throws.
class DraftOffer {
 public:
  /// What it works with. References only.
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

  /// Asks about the newest draft. One whose texts are stored by now is removed without a question; one that the user throws away, which is asked about once
  /// more, makes way for the next. Every other stays where it is until the next start,
  /// and so do all while another program asks about them.
  /// \return the first text that is not saved, when the wizard holds the campaign of a draft with its texts; the campaign counts as changed
  [[nodiscard]] std::optional<TextKind> Offer();

 private:
  enum class Stored { kUnknown, kGone, kThere };
  struct Found {
    Stored stored = Stored::kUnknown;
    CampaignTexts texts;
  };
  /// The campaign of a draft as it is stored now.
  [[nodiscard]] Found Look(const Draft& draft);
  [[nodiscard]] bool MayThrowAway();
  [[nodiscard]] bool TakeUp(const Draft& draft, Stored stored);

  Parts parts_;
  Diagnostics diagnostics_;
};

}  // namespace qbx
