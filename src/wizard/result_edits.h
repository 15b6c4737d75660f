// What the user does to the rows of step 3.

#pragma once

#include <functional>
#include <utility>

#include "campaigns/campaign_record.h"
#include "database/statements.h"
#include "diagnostics/diagnostics.h"
#include "dispatch/replace_guard.h"
#include "results/flags.h"
#include "results/results_view.h"
#include "results/send_methods.h"
#include "settings/options.h"

namespace qbx {

/// Changes to the rows of the current campaign. Each is refused, with a message, while a run sends the campaign (a flag flipped under its
/// hands could undo its own mark) and while the rows shown are another campaign's. No method throws.
class ResultEdits {
 public:
  struct Parts {
    Statements& statements;
    const CurrentCampaign& campaign;
    ReplaceGuard& guard;
    ResultFlags& flags;
    ResultsView& results;
    const Options& options;
    std::function<void()> loadOptions;  ///< reads the company's options again
  };
  ResultEdits(Parts parts, Diagnostics diagnostics) : parts_(std::move(parts)), diagnostics_(diagnostics) {}

  /// \return false when the rows of the campaign may not be changed now; the user was told
  [[nodiscard]] bool MayEdit();
  /// The same for the rows that are shown.
  [[nodiscard]] bool MayEditShown();

  /// A click on a cell of the grid; flips the flag of a flag column.
  void ClickCell(const QString& column, qint64 recordId);

  /// Applies the rules to every row and shows the results anew.
  /// \return false when it was refused, by `MayEditShown` or since the options could not be read (the user was told); a rule that failed was reported, and those before it stay
  bool ApplySendMethods(const SendMethods& methods);

 private:
  [[nodiscard]] bool ConsentKnown();

  Parts parts_;
  Diagnostics diagnostics_;
};

}  // namespace qbx
