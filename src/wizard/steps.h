// Moving through the steps of the wizard.

#pragma once

#include <QString>
#include <functional>
#include <optional>

#include "campaigns/campaign_record.h"
#include "campaigns/campaign_storage.h"
#include "database/event_log.h"
#include "diagnostics/diagnostics.h"
#include "dispatch/credit_estimate.h"
#include "dispatch/replace_guard.h"
#include "dispatch/results_log.h"
#include "queries/process_query.h"
#include "results/counters.h"
#include "results/first_rows.h"
#include "results/results_view.h"
#include "settings/options.h"
#include "settings/startup_values.h"
#include "wizard/campaign_settings.h"
#include "wizard/wizard_state.h"

namespace qbx {

/// The result of a step. A window first selects the tab, then shows the notice.
struct StepResult {
  int selectTab = 0;                   ///< 1 to 5, 0 to stay
  std::optional<Message> notice = {};  ///< shown after the tab is selected

  /// Whether the step was completed.
  [[nodiscard]] bool Moved() const { return selectTab != 0; }
};

/// The commands that span the steps. Every refusal and question is shown before anything is written. A refused step
/// leaves the state unchanged, except for dates that a check has filled. No method throws.
class WizardSteps {
 public:
  /// The objects that the steps drive.
  struct Parts {
    CurrentCampaign& campaign;
    WizardState& state;
    CampaignStorage& storage;
    CampaignSettings& settings;
    QueryProcessor& queries;
    ResultsView& results;
    FirstRows& firstRows;
    Counters& counters;
    CreditEstimate& estimate;
    EventLog& events;
    ReplaceGuard& guard;
    ResultsLog& resultsLog;
    const Options& options;
    const EditionFlags& edition;
    std::function<void()> loadOptions;  ///< reads the company's options again
  };
  WizardSteps(Parts parts, Diagnostics diagnostics);

  /// Whether "Next >" of tab `index` + 1 runs the query.
  [[nodiscard]] static bool RunsQuery(int index);
  /// "Next >" of tab `index` + 1.
  /// \param index  0 to 2
  [[nodiscard]] StepResult NextStep(int index);
  /// "< Back" of tab `index` + 1. Tab 1 has no tab before it.
  [[nodiscard]] StepResult BackStep(int index);

  /// "Refresh" on step 2: runs the query again with the filters. It completes no step.
  /// \return false when it was refused, failed or was cancelled
  bool Refresh();

  /// Starts a new campaign with the defaults in the wizard. The date boxes are empty.
  void StartNewCampaign();

  /// "Run Marketing Campaign": opens the last tab when steps 1 to 3 are complete.
  [[nodiscard]] StepResult RunCampaign();

  /// A tab was opened: reads again what it shows and may have changed (the first rows on tab 2, all rows on tab 3,
  /// counters on tab 5).
  void TabOpened(int tab);

  // The questions of commands that drop something. New and Load ask only when something would be lost. \return true
  // when the user agreed
  [[nodiscard]] bool ConfirmNewCampaign();
  [[nodiscard]] bool ConfirmLoadCampaign();
  [[nodiscard]] bool ConfirmExit();

 private:
  /// Asks the question about sent rows, then makes the checks of the step. A refusal is shown.
  [[nodiscard]] bool MayRunQuery(int index);
  [[nodiscard]] bool MayReplaceRows();
  /// Records that the shown rows are out of date. \return whether the query was run
  [[nodiscard]] bool RowsReplaced(QueryOutcome outcome);
  /// Whether there are unsaved changes, or rows of a campaign without a name.
  [[nodiscard]] bool SomethingWouldBeLost() const;
  void LogClick(const QString& text, int index);
  [[nodiscard]] bool Confirm(const QString& text, MessageAnswer defaultAnswer);

  Parts parts_;
  Diagnostics diagnostics_;
};

}  // namespace qbx
