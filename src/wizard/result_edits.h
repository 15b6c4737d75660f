// Changing the rows of step 3.

#pragma once

#include <functional>

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

/// Changes to the rows of the current campaign. Each is refused with a message while a run sends the campaign (which
/// could undo the run's own marks), and while the shown rows belong to another campaign. Only `DeleteRow` throws.
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
  /// From now on flips made by `flags` can be undone.
  ResultEdits(Parts parts, Diagnostics diagnostics);
  ResultEdits(const ResultEdits&) = delete;
  ResultEdits& operator=(const ResultEdits&) = delete;

  /// \return false when the rows of the campaign may not be changed now; the user was told
  [[nodiscard]] bool MayEdit();
  /// Whether the shown rows may be changed now; the user was told when not.
  [[nodiscard]] bool MayEditShown();

  /// A click on a cell of the grid; flips the flag of a flag column.
  void ClickCell(const QString& column, qint64 recordId);

  /// Applies the rules to every row and shows the results again.
  /// \return false when it was refused: by `MayEditShown`, or because the options could not be read (the user was
  ///         told). A rule that fails is reported, and earlier rules stay applied
  bool ApplySendMethods(const SendMethods& methods);

  /// Runs the grid's deletion of a shown row, so that it can be undone. Throws DatabaseError; nothing was deleted then.
  /// \param remove  \return whether the row was deleted
  bool DeleteRow(qint64 recordId, const std::function<bool()>& remove);

  // Changes of many rows by their keys. The shown rows and counters are updated. The result is for a line beside the
  // grid (`ChangeText`). A refusal or a failure was shown, and nothing was changed then.

  /// Ticks or unticks a send flag; `tick_reasons.h` says which rows cannot be ticked.
  RowChange SetFlag(Channel flag, bool ticked, const std::vector<qint64>& rows);
  /// Takes rows out without a question. It is used for single rows, too, so that they can be put back.
  RowChange TakeOut(const std::vector<qint64>& rows);
  /// Undoes the last change, of one row or of many.
  RowChange Undo();
  /// What Undo would undo ("12 rows taken out"); empty when there is nothing, as after a new query or with another
  /// campaign.
  [[nodiscard]] const QString& LastChange() const { return parts_.changes.Last(); }

 private:
  [[nodiscard]] bool ConsentKnown();
  RowChange Change(const char* routine, const std::vector<qint64>& rows,
                   const std::function<RowChange(int campaign)>& change);

  Parts parts_;
  Diagnostics diagnostics_;
};

}  // namespace qbx
