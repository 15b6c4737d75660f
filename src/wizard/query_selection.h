// What the user's choices in steps 1 and 2 change beyond the control that was clicked.

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

/// Choices of the user, and their effects on the wizard's state. Each of these marks the campaign as changed.
class QuerySelection {
 public:
  QuerySelection(Statements& statements, CurrentCampaign& campaign, WizardState& state, const Options& options,
                 const EditionFlags& edition, Diagnostics diagnostics);

  /// The user selected a node: its options are shown, the makes text is emptied, and it becomes the campaign's query.
  /// \param index  a number that the tree does not have does nothing
  void NodeClick(int index);

  /// The selection in the makes list changed: the makes text is built anew.
  /// \param selected  as long as the list
  void MakesClick(const std::vector<bool>& selected);

  /// The makes text was edited: the makes that it names are selected in the list, so that the next click adds to them.
  void MakesTyped(const QString& text);

  /// A filter was ticked or unticked, or another condition was chosen, in the state: how the controls look now.
  FilterView FilterClick();

  /// "Include Opted Out" was clicked: sets it, and unticks it again with a message when the company's settings forbid
  /// it.
  void IncludeOptedOutClick(bool ticked);

  /// What the selected query selects with the options as they stand.
  [[nodiscard]] QString Selects() const;

  /// Which numbers of the campaign, as it is stored, read otherwise than they used to; see filter_notes.h.
  [[nodiscard]] QStringList NumbersReadAnew() const;

  /// Any other setting of the campaign was edited.
  void Changed() { campaign_.CampaignChanged = true; }

  /// What is beside the dates when they are those of a reminder and have passed.
  [[nodiscard]] QString DatesOver() const;

  /// Shows the options of a node without the effects of a click; a number that the tree does not have selects none.
  /// Fills the list of makes when the query has one.
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
