#include "wizard/steps.h"

#include "wizard/step_checks.h"

namespace qbx {

namespace {

constexpr int kLastStep = kResultsTab - 1;

Message YesNoQuestion(const QString& text, MessageAnswer defaultAnswer) {
  return {
      .text = text, .icon = MessageIcon::kQuestion, .buttons = MessageButtons::kYesNo, .defaultAnswer = defaultAnswer};
}

}  // namespace

bool WizardSteps::RunsQuery(int index) {
  return index < kLastStep;
}

WizardSteps::WizardSteps(Parts parts, Diagnostics diagnostics) : parts_(std::move(parts)), diagnostics_(diagnostics) {}

StepResult WizardSteps::NextStep(int index) {
  if (index < 0 || index > kLastStep) return {};
  LogClick(QStringLiteral("Clicked: Next(%1)"), index);
  const bool runsQuery = RunsQuery(index);
  if (runsQuery && !MayRunQuery(index)) return {};
  WizardState& state = parts_.state;
  if (runsQuery) {
    if (!RowsReplaced(parts_.queries.ProcessQuery(index, false))) return {};
    const Filters optedOutAlone = {.chkIncludeOptedOut = state.filters.chkIncludeOptedOut};
    state.appliedFilters = index == 0 ? optedOutAlone : state.filters;
  }
  const bool showsResults = index + 2 == kResultsTab;
  if (showsResults && !parts_.results.DisplayResults(parts_.campaign.record.ID)) return {};
  state.bStepComplete[static_cast<size_t>(index) + 1] = true;
  StepResult result{.selectTab = index + 2};
  if (showsResults) result.notice = OptedOutNotice(state.filters, parts_.options.Only_Send_Comms_When_Opted_In);
  return result;
}

/// Rows that are being sent elsewhere stay. When some went out, the user is asked.
bool WizardSteps::MayReplaceRows() {
  if (!parts_.storage.EnsureId() || !parts_.settings.FollowRows()) return false;
  const int campaign = parts_.campaign.record.ID;
  const ReplaceGuard::Finding finding = parts_.guard.Look(campaign);
  if (finding.refusal) {
    diagnostics_.ui.ShowMessage(*finding.refusal);
    return false;
  }
  // Reads the options that could not be read while the database was away.
  if (parts_.options.ReadFailed) parts_.loadOptions();
  parts_.counters.UpdateCounters(campaign);
  if (parts_.counters.Values().Sent() == 0 && !finding.messagesOnRecord) return true;
  return diagnostics_.ui.ShowMessage(ResetProcessedQuestion()) == MessageAnswer::kYes;
}

/// After a failure the rows count as replaced, too: the connection may have been lost during the commit.
bool WizardSteps::RowsReplaced(QueryOutcome outcome) {
  if (outcome != QueryOutcome::kCancelled) {
    parts_.results.RowsReplaced();
    parts_.firstRows.Forget();
  }
  return outcome == QueryOutcome::kDone;
}

bool WizardSteps::MayRunQuery(int index) {
  if (!MayReplaceRows()) return false;
  const int query = parts_.campaign.record.CampaignTypeID;
  std::optional<Message> refusal =
      index == 0 ? CheckStepOne(query, parts_.state.options, parts_.options.Using_Vrelo, diagnostics_.clock.Today())
                 : CheckStepTwo(query, parts_.state.filters, parts_.edition.boat);
  if (!refusal && !parts_.state.bStepComplete[static_cast<size_t>(index)]) refusal = StepNotReachedMessage();
  if (!refusal) return true;
  refusal->reason = Reason::kSettingsRefused;
  diagnostics_.ui.ShowMessage(*refusal);
  return false;
}

StepResult WizardSteps::BackStep(int index) {
  if (index < 1 || index > kLastStep) return {};
  LogClick(QStringLiteral("Clicked: Back(%1)"), index);
  return {.selectTab = index};
}

void WizardSteps::LogClick(const QString& text, int index) {
  parts_.events.LogEvent(kEventMarketing, 0, QString::fromLatin1(kMarketingKey), text.arg(index));
}

bool WizardSteps::Refresh() {
  WizardState& state = parts_.state;
  if (const std::optional<Message> refusal = CheckRefresh(state.filters, state.bStepComplete[1], parts_.edition.boat)) {
    diagnostics_.ui.ShowMessage(*refusal);
    return false;
  }
  if (!MayReplaceRows()) return false;
  if (!RowsReplaced(parts_.queries.Refresh())) return false;
  state.appliedFilters = state.filters;
  parts_.firstRows.Read(parts_.campaign.record.ID);
  return true;
}

void WizardSteps::StartNewCampaign() {
  WizardState& state = parts_.state;
  diagnostics_.ui.SetBusy(true);
  parts_.storage.InitialiseCampaign();
  const bool databaseAnswers = parts_.campaign.record.ID != 0;
  if (parts_.options.ReadFailed && databaseAnswers) parts_.loadOptions();
  state.lstMakesSelected.assign(state.lstMakes.size(), false);
  parts_.settings.SetupCampaignData();
  state.lblRecords = {QStringLiteral("Records found:"), QStringLiteral("Records found:")};
  state.options.dteDate = {};
  diagnostics_.ui.SetBusy(false);
}

StepResult WizardSteps::RunCampaign() {
  parts_.loadOptions();
  if (const std::optional<Message> refusal = CheckRunCampaign(parts_.state.bStepComplete)) {
    diagnostics_.ui.ShowMessage(*refusal);
    return {};
  }
  return {.selectTab = kProcessTab};
}

void WizardSteps::TabOpened(int tab) {
  if (tab == kFilterTab) parts_.firstRows.Read(parts_.campaign.record.ID);
  if (tab != kResultsTab && tab != kProcessTab) return;
  const bool rowsFollowed = parts_.settings.FollowRows();
  const int campaign = parts_.campaign.record.ID;
  if (tab == kProcessTab) {
    parts_.estimate.Invalidate();  // other desks work on the same rows
    return parts_.counters.UpdateCounters(campaign);
  }
  if (!rowsFollowed) return;
  if (parts_.results.OutOfDate(campaign))
    parts_.results.DisplayResults(campaign);
  else if (parts_.resultsLog.ProcessResultsLogged || parts_.results.HasNewerRows())
    parts_.results.RefreshResults();
  parts_.resultsLog.ProcessResultsLogged = false;
}

bool WizardSteps::SomethingWouldBeLost() const {
  const bool unnamedRows = parts_.campaign.record.ID < 0 && parts_.results.Rows().StoredCount() > 0;
  return parts_.campaign.CampaignChanged || unnamedRows;
}

bool WizardSteps::ConfirmNewCampaign() {
  return !SomethingWouldBeLost() ||
         Confirm(QStringLiteral("Lose any changes and start a new campaign?"), MessageAnswer::kNo);
}

bool WizardSteps::ConfirmLoadCampaign() {
  return !SomethingWouldBeLost() ||
         Confirm(QStringLiteral("Lose any changes and load an existing campaign?"), MessageAnswer::kNo);
}

bool WizardSteps::ConfirmExit() {
  return Confirm(QLatin1String("Exit ") + diagnostics_.ui.ApplicationTitle() + u'?', MessageAnswer::kYes);
}

bool WizardSteps::Confirm(const QString& text, MessageAnswer defaultAnswer) {
  return diagnostics_.ui.ShowMessage(YesNoQuestion(text, defaultAnswer)) == MessageAnswer::kYes;
}

}  // namespace qbx
