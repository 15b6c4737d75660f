// Moving the settings of a campaign between the wizard and its record; what closing the program does to unsaved ones.

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

/// A stored date of an earlier year is not taken over by the wizard.
inline constexpr int kEarliestStoredYear = 1996;

/// Copies what the wizard holds into the record: everything but its ID, name, description, version and query number. An
/// empty date leaves the record's.
void CopyToRecord(const WizardState& state, CampaignRecord& record);

/// Copies the record into the wizard's plain values (completion flags, dates later than 1995, option and filter values,
/// templates). What is not stored (opted-out customers, model filter, campaign type, the two date texts) is cleared, so
/// that no campaign inherits another's. A list position that its list does not have becomes -1.
/// \return the conditions of filters (their numbers) that were out of range
std::vector<int> CopyFromRecord(const CampaignRecord& record, WizardState& state);

/// The caption of the main window: `base`, and " - [" name "]" for a campaign with a name.
[[nodiscard]] QString WindowCaption(const QString& base, const CampaignRecord& record);

/// The bridge between the current campaign and the wizard. No method throws.
class CampaignSettings {
 public:
  CampaignSettings(Statements& statements, CurrentCampaign& campaign, WizardState& state, QuerySelection& selection,
                   ResultsView& results, Diagnostics diagnostics);

  /// Applies the record to the wizard and shows its results. A window then copies the state to its controls, selects
  /// tab 1, hides the examples and empties the box of process results.
  void SetupCampaignData();

  /// Copies the wizard into the record and has it saved.
  /// \param save  opens the campaign manager (or saves without one) and returns when that is done
  /// \return true when the campaign is stored and its results carry its number; false when it still has no permanent ID,
  /// or when its results could not be given it (reported; it counts as changed then, see `FollowRows`)
  bool SaveCampaignSettings(const std::function<void()>& save);

  /// Gives rows the permanent number of their campaign that a save could not give them. Tried again before anything
  /// that reads or replaces them.
  /// \return false when rows of the current campaign still have their old number (reported)
  bool FollowRows();

  /// \param load  opens the campaign manager (or loads without one) and returns the ID of the campaign loaded into the
  ///              record, below 1: none
  /// \return true when a campaign was loaded; the wizard shows it then
  bool LoadCampaignSettings(const std::function<int()>& load);

  /// Replaces the letter, the e-mail and the text message by those of another stored campaign, once the user agreed.
  /// \param position  of the campaign in the list `cmbCampaigns`, -1: none was chosen (the user is told)
  /// \return true when the state holds the other texts
  bool LoadLetters(int position);

  /// The user wants to leave: asks when there are unsaved changes, and then removes the rows of a campaign that was
  /// never saved.
  /// \return true when the program may close
  [[nodiscard]] bool CloseRequest();
  /// The user has agreed to quit because the connection is lost: the same as a Yes to `CloseRequest`, without a question. A failure is
  /// only logged.
  void Quit();

 private:
  void FillLists();
  void FillCampaignList();

  /// Rows whose campaign was stored under another number than theirs.
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
