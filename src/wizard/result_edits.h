// What the user does to the rows of step 3.

#pragma once

#include <functional>
#include <utility>

#include "campaigns/campaign_record.h"
#include "database/statements.h"
#include "diagnostics/diagnostics.h"
#include "dispatch/replace_guard.h"
#include "dispatch/row_changes.h"
#include "results/flags.h"
#include "results/results_view.h"
#include "results/send_methods.h"
#include "settings/options.h"

namespace qbx {

/// Changes to the rows of the current campaign. Each is refused, with a message, while a run sends the campaign (a flag flipped under its
/// hands could undo its own mark) and while the rows shown are another campaign's. No method but `DeleteRow` throws.
class ResultEdits {
 public:
  struct Parts {
    Statements& statements;
    const CurrentCampaign& campaign;
    ReplaceGuard& guard;
    RowChanges& changes;
    ResultFlags& flags;
    ResultsView& results;
    const Options& options;
    std::function<void()> loadOptions;  ///< reads the company's options again
  };
  /// Flips that `flags` makes can be taken back from here on.
  ResultEdits(Parts parts, Diagnostics diagnostics);
  ResultEdits(const ResultEdits&) = delete;
  ResultEdits& operator=(const ResultEdits&) = delete;

  /// \return false when the rows of the campaign may not be changed now; the user was told
  [[nodiscard]] bool MayEdit();
  /// The same for the rows that are shown.
  [[nodiscard]] bool MayEditShown();

  /// A click on a cell of the grid; flips the flag of a flag column.
  void ClickCell(const QString& column, qint64 recordId);

  /// Applies the rules to every row and shows the results anew.
  /// \return false when it was refused, by `MayEditShown` or since the options could not be read (the user was told); a rule that failed was reported, and those before it stay
  bool ApplySendMethods(const SendMethods& methods);

  /// Runs the grid's deletion of one of the rows that are shown, so that it can be taken back. Throws DatabaseError; nothing was deleted then.
  /// \param remove  \return whether the row was deleted
  bool DeleteRow(qint64 recordId, const std::function<bool()>& remove);

  // Many rows at once, by their keys. Rows and counters that are shown follow. What came of it is for a line beside the grid (`ChangeText`);
  // a refusal or a failure was shown, and nothing was changed then.

  /// Ticks or unticks a send flag; `tick_reasons.h` says which rows cannot be ticked.
  RowChange SetFlag(Channel flag, bool ticked, const std::vector<qint64>& rows);
  /// Takes rows out; one row as well as many, so that it can be put back. Nothing is asked.
  RowChange TakeOut(const std::vector<qint64>& rows);
  /// Takes the last change back, of one row or of many.
  RowChange Undo();
  /// What Undo would take back ("12 rows taken out"); empty when there is nothing, as after a new query or with another campaign.
  [[nodiscard]] const QString& LastChange() const { return parts_.changes.Last(); }

 private:
  [[nodiscard]] bool ConsentKnown();
  RowChange Change(const char* routine, const std::vector<qint64>& rows,
                   const std::function<RowChange(int campaign)>& change);

  Parts parts_;
  Diagnostics diagnostics_;
};

}  // namespace qbx
