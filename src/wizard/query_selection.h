// The effects of the user's choices in steps 1 and 2 beyond the clicked control.

#pragma once

#include <QString>
#include <vector>

#include "campaigns/campaign_record.h"
#include "database/statements.h"
#include "diagnostics/diagnostics.h"
#include "settings/options.h"
#include "settings/startup_values.h"
#include "wizard/wizard_state.h"

namespace qbx {

/// The user's choices and their effects on the wizard's state. Each choice marks the campaign as changed.
class QuerySelection {
 public:
  QuerySelection(Statements& statements, CurrentCampaign& campaign, WizardState& state, const Options& options,
                 const EditionFlags& edition, Diagnostics diagnostics);

  /// The user selected a node: its options are shown, the makes text is emptied, and it becomes the campaign's query.
  /// \param index  a number that the tree lacks is ignored
  void NodeClick(int index);

  /// The selection in the list of makes changed: the makes text is rebuilt.
  /// \param selected  for each entry of the list
  void MakesClick(const std::vector<bool>& selected);

  /// The makes text was edited: the makes in it are selected in the list, so that the next click adds to them.
  void MakesTyped(const QString& text);

  /// A filter was ticked or unticked, or its condition was changed, in the state. \return how the controls look now
  FilterView FilterClick();

  /// The user clicked "Include Opted Out": sets it, or unticks it again with a message when the company's settings
  /// forbid it.
  void IncludeOptedOutClick(bool ticked);

  /// What the selected query selects with its present options.
  [[nodiscard]] QString Selects() const;

  /// Which numbers of the stored campaign are now read differently; see filter_notes.h.
  [[nodiscard]] QStringList NumbersReadAnew() const;

  /// Any other setting of the campaign was edited.
  void Changed() { campaign_.CampaignChanged = true; }

  /// The note beside the dates of a reminder when they have passed.
  [[nodiscard]] QString DatesOver() const;

  /// Shows the options of a node without the effects of a click; a number that the tree lacks selects no node. Fills
  /// the list of makes if the query has one.
  void ShowNode(int index);

 private:
  [[nodiscard]] QStringList Makes() const;

  Statements& statements_;
  CurrentCampaign& campaign_;
  WizardState& state_;
  const Options& options_;
  const EditionFlags& edition_;
  Diagnostics diagnostics_;
};

}  // namespace qbx
