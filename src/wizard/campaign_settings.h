// Moving the settings of a campaign between the wizard and its record; closing the program with unsaved settings.

#pragma once

#include <QString>
#include <functional>

#include "campaigns/campaign_record.h"
#include "database/statements.h"
#include "diagnostics/diagnostics.h"
#include "results/results_view.h"
#include "wizard/query_selection.h"
#include "wizard/wizard_state.h"

namespace qbx {

/// The wizard ignores a stored date of an earlier year.
inline constexpr int kEarliestStoredYear = 1996;

/// Copies the wizard's values into the record, except ID, name, description, version and query number. An empty date
/// leaves the record's date.
void CopyToRecord(const WizardState& state, CampaignRecord& record);

/// Copies the record into the wizard's plain values (completion flags, dates later than 1995, option and filter values,
/// templates). Values that are not stored (opted-out customers, model filter, campaign type, the two date texts) are
/// cleared, so that no campaign takes over another's. A list position that does not exist becomes -1.
/// \return the numbers of the filters whose condition was out of range
std::vector<int> CopyFromRecord(const CampaignRecord& record, WizardState& state);

/// The caption of the main window: `base`, with " - [" name "]" added for a campaign with a name.
[[nodiscard]] QString WindowCaption(const QString& base, const CampaignRecord& record);

/// Connects the current campaign and the wizard. No method throws.
class CampaignSettings {
 public:
  CampaignSettings(Statements& statements, CurrentCampaign& campaign, WizardState& state, QuerySelection& selection,
                   ResultsView& results, Diagnostics diagnostics);

  /// Applies the record to the wizard and shows its results. The window must then copy the state to its controls,
  /// select tab 1, hide the examples and empty the box of process results.
  void SetupCampaignData();

  /// Copies the wizard into the record and saves it.
  /// \param save  opens the campaign manager (or saves without one) and returns when that is done
  /// \return true when the campaign is stored and its results have its number. False when it still has no permanent ID,
  ///         or when its results could not be given it (reported; the campaign counts as changed then, see
  ///         `FollowRows`)
  bool SaveCampaignSettings(const std::function<void()>& save);

  /// Gives rows the permanent number of their campaign when a save could not. Tried again before the rows are read or
  /// replaced.
  /// \return false when rows of the current campaign still have their old number (reported)
  bool FollowRows();

  /// \param load  opens the campaign manager (or loads without one) and returns the ID of the campaign loaded into the
  ///              record, below 1 for none
  /// \return true when a campaign was loaded, which the wizard then shows
  bool LoadCampaignSettings(const std::function<int()>& load);

  /// Replaces the letter, the e-mail and the text message by those of another stored campaign, after asking the user.
  /// \param position  of the campaign in the list `cmbCampaigns`; -1 when none was chosen (the user is told)
  /// \return true when the state holds the other texts
  bool LoadLetters(int position);

  /// The user wants to leave. Asks when there are unsaved changes, then removes the rows of a campaign that was never
  /// saved.
  /// \return true when the program may close
  [[nodiscard]] bool CloseRequest();
  /// The user agreed to quit because the connection is lost: does what `CloseRequest` does, without the question. A
  /// failure is only logged.
  void Quit();

 private:
  void FillLists();
  void FillCampaignList();

  /// Rows whose campaign was stored under a new number.
  struct Renumbering {
    int from;
    int to;
  };

  Statements& statements_;
  CurrentCampaign& campaign_;
  WizardState& state_;
  QuerySelection& selection_;
  ResultsView& results_;
  Diagnostics diagnostics_;
  std::vector<Renumbering> unfollowed_;
};

}  // namespace qbx
