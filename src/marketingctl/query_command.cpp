// marketingctl query: steps 1 and 2 of a campaign, stored or temporary.

#include <memory>

#include "marketingctl/campaign_arguments.h"
#include "marketingctl/campaign_names.h"
#include "marketingctl/commands.h"
#include "marketingctl/filter_notes_message.h"
#include "marketingctl/output.h"
#include "marketingctl/text_argument.h"
#include "queries/date_check.h"
#include "queries/filter_table.h"
#include "wizard/dates_over.h"

namespace qbx::ctl {

namespace {

struct QueryArguments {
  std::string id;  ///< empty: a temporary campaign
  CampaignArguments settings;
  /// Values of filters by number; a campaign does not store these filters.
  std::array<std::optional<std::string>, kFilterCount> unstored;
  std::optional<std::string> campaignType, save;
  bool includeOptedOut = false;
  bool resetProcessed = false;
  bool allowSameName = false;
};

/// Puts the values that a stored campaign does not hold into the wizard's state.
bool ApplyUnstored(const QueryArguments& arguments, CampaignDesk& desk) {
  for (const FilterRow& row : FilterRows()) {
    const std::optional<std::string>& text = arguments.unstored[row.index];
    if (!text) continue;
    desk.state.filters.chkFilter[row.index] = true;
    desk.state.filters.*row.text = TextArgument(*text);
  }
  if (arguments.campaignType) desk.state.options.cmbType = TextArgument(*arguments.campaignType);
  if (!arguments.includeOptedOut) return true;
  desk.selection.IncludeOptedOutClick(true);
  return desk.state.filters.chkIncludeOptedOut;
}

/// Uses the given or stored dates as they are. The wizard would drop dates before `kEarliestStoredYear`.
void TakeDates(const CampaignRecord& record, QueryOptions& options) {
  for (const auto& [date, i] : {std::pair(record.Date1.date(), 0U), std::pair(record.Date2.date(), 1U)}) {
    QueryOptions probe{.dteDate = {date, date}};
    if (CheckDates(probe)) options.dteDate[i] = date;
  }
}

void WarnOfDates(Program& program) {
  const QString text =
      DatesOverText(program.app.campaign.record.CampaignTypeID, program.desk.state.options, program.app.clock.Today());
  if (!text.isEmpty()) PrintNote(text);
}

/// Does both steps, like "Next >" twice, and shows the notices of the second.
/// \return how many steps were done
int RunSteps(Program& program) {
  TellFilterNotes(program.ui, program.desk.state.filters, program.app.startup.edition.boat);
  program.desk.state.bStepComplete = {true, false, false, program.desk.state.bStepComplete[3]};
  for (const int step : {0, 1}) {
    const StepResult result = program.desk.steps.NextStep(step);
    if (result.notice) program.ui.ShowMessage(*result.notice);
    if (result.Moved()) continue;
    if (HeadlessUi::Interrupted()) Refuse(Reason::kInterrupted, QStringLiteral("The query was interrupted."));
    return step;
  }
  return 2;
}

/// \param stepsDone  of a saved campaign, which keeps its rows
int RefuseUnfinished(int stepsDone) {
  return Refuse(
      stepsDone == 0
          ? QStringLiteral("The rows of the campaign are as they were.")
          : QStringLiteral(
                "The campaign now holds the rows of step 1, to which its filters were not applied. Run the query again."));
}

QJsonValue BeforeJson(const std::optional<LeftOutBefore>& before) {
  if (!before) return QJsonValue::Null;
  return QJsonObject{{QStringLiteral("opted_out"), before->optedOut},
                     {QStringLiteral("no_marketing"), before->noMarketing}};
}

QJsonValue AfterJson(const std::optional<LeftOutAfter>& after) {
  if (!after) return QJsonValue::Null;
  QJsonArray filters;
  for (const LeftOutAfter::Filter& filter : after->filters) {
    filters.append(QJsonObject{{QStringLiteral("filter"), QString::fromLatin1(FilterRows()[filter.filter].name)},
                               {QStringLiteral("rows"), filter.rows}});
  }
  return QJsonObject{{QStringLiteral("candidates"), after->candidates},
                     {QStringLiteral("filters"), filters},
                     {QStringLiteral("without_consent"), after->withoutConsent}};
}

void PrintCounts(Program& program, int campaignId) {
  const auto& counts = program.desk.queries.Records();
  const LeftOut& leftOut = program.desk.state.leftOut;
  if (program.json) {
    const QJsonObject reasons{{QStringLiteral("step1"), BeforeJson(leftOut.before)},
                              {QStringLiteral("step2"), AfterJson(leftOut.after)}};
    PrintJson(QJsonObject{{QStringLiteral("campaign"), campaignId},
                          {QStringLiteral("step1"), counts[0]},
                          {QStringLiteral("step2"), counts[1]},
                          {QStringLiteral("left_out"), reasons}});
    return;
  }
  PrintLine(QStringLiteral("Campaign %1: %2 rows from the query, %3 after filters and consent")
                .arg(campaignId)
                .arg(counts[0])
                .arg(counts[1]));
  for (const QString& text : LeftOutTexts(leftOut, program.app.startup.edition.boat)) {
    if (!text.isEmpty()) PrintLine(text);
  }
}

/// Stores only which steps are complete. Everything that another desk saved during the query stays.
bool StoreCompletion(Application& app, const WizardState& state) {
  CampaignRecord& record = app.campaign.record;
  if (!app.campaignStorage.LoadCampaign(record.ID)) return false;
  record.Step1 = state.bStepComplete[1];
  record.Step2 = state.bStepComplete[2];
  return app.campaignStorage.UpdateCampaign();
}

int QueryStored(Program& program, const QueryArguments& arguments) {
  Application& app = program.app;
  const std::optional<int> id = FindCampaign(program, arguments.id);
  if (!id || !app.campaignStorage.LoadCampaign(*id)) return kRefused;
  program.desk.settings.SetupCampaignData();
  CampaignRecord dated = app.campaign.record;
  ApplyCampaignArguments(arguments.settings, app.startup.edition, app.clock.Today(), dated);
  TakeDates(dated, program.desk.state.options);
  WarnOfDates(program);
  if (!ApplyUnstored(arguments, program.desk)) return kRefused;
  const int done = RunSteps(program);
  if (done > 0 && !StoreCompletion(app, program.desk.state)) return kRefused;
  if (done < 2) return RefuseUnfinished(done);
  PrintCounts(program, app.campaign.record.ID);
  return kDone;
}

/// Removes the rows of a temporary campaign at the end of the command.
void RemoveRows(Program& program) {
  program.app.statements.dbExecute(QStringLiteral("DELETE FROM [Campaign Results] WHERE CampaignID = ") +
                                   QString::number(program.app.campaign.record.ID));
}

int QueryTemporary(Program& program, const QueryArguments& arguments) {
  Application& app = program.app;
  CampaignRecord& record = app.campaign.record;
  const QString name = arguments.save ? TextArgument(*arguments.save) : QString();
  if (arguments.save && !NameMayBeUsed(program, name, arguments.allowSameName)) return kRefused;
  ApplyCampaignArguments(arguments.settings, app.startup.edition, app.clock.Today(), record);
  if (arguments.save) CheckStoredDates(arguments.settings, record);
  program.desk.settings.SetupCampaignData();
  TakeDates(record, program.desk.state.options);
  WarnOfDates(program);
  if (!ApplyUnstored(arguments, program.desk)) return kRefused;
  if (RunSteps(program) < 2) {
    RemoveRows(program);
    return kRefused;
  }
  if (!arguments.save) {
    RemoveRows(program);
    PrintCounts(program, record.ID);
    return kDone;
  }
  record.Campaign_Name = name;
  if (!program.desk.settings.SaveCampaignSettings([&] { app.campaignStorage.SaveCampaign(); })) {
    RemoveRows(program);
    return kRefused;
  }
  PrintCounts(program, record.ID);
  return kDone;
}

int Query(Program& program, const QueryArguments& arguments) {
  if (arguments.resetProcessed) program.ui.SetAnswer(Question::kResetProcessedResults, MessageAnswer::kYes);
  return arguments.id.empty() ? QueryTemporary(program, arguments) : QueryStored(program, arguments);
}

}  // namespace

void AddQueryCommand(Runner& runner) {
  auto arguments = std::make_shared<QueryArguments>();
  CLI::App& command = *runner.Root().add_subcommand(
      "query", "Select the rows of a campaign: the starting query, then filters and consent");
  CLI::Option* id =
      DeclareCampaign(command, arguments->id)
          ->description("A saved campaign, by number or name; without it the flags below make a temporary one");
  DeclareCampaignArguments(command, arguments->settings);
  CLI::Option* query = command.get_option("--query");
  for (const FilterRow& row : FilterRows()) {
    if (!row.IsStored()) command.add_option(row.flag, arguments->unstored[row.index], row.help);
  }
  command.add_flag("--include-opted-out", arguments->includeOptedOut, "Include customers who opted out (not stored)");
  command.add_option("--campaign-type", arguments->campaignType,
                     "Campaign type, where the marketing platform is in use");
  command.add_flag("--reset-processed", arguments->resetProcessed,
                   "Replace the rows although some were processed (without it the command is refused then)");
  command.add_option("--save", arguments->save, "Keep the temporary campaign and its rows under this name")
      ->needs(query)
      ->excludes(id);
  DeclareAllowSameName(command, arguments->allowSameName);
  command.footer(
      "Examples: marketingctl --folder garage --user Pat query 12\n          marketingctl --folder garage --user Pat query --query \"Top Customers\" --records 25 --json");
  runner.AddCommand(command, [arguments](Program& program) {
    if (arguments->id.empty() && !arguments->settings.query) {
      Refuse(Reason::kUsage, QStringLiteral("query: name a saved campaign or a --query."));
      return static_cast<int>(kUsage);
    }
    CampaignArguments beyondDates = arguments->settings;
    beyondDates.from = beyondDates.to = std::nullopt;
    if (!arguments->id.empty() && beyondDates != CampaignArguments()) {
      Refuse(
          Reason::kUsage,
          QStringLiteral(
              "query: a saved campaign is run as it is saved, but for --from and --to; \"campaigns set\" changes it."));
      return static_cast<int>(kUsage);
    }
    return Query(program, *arguments);
  });
}

}  // namespace qbx::ctl
