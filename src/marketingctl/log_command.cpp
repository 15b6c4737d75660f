// marketingctl log: events, the last results log, and messages in doubt.

#include <memory>

#include "database/procedure.h"
#include "dispatch/results_log_file.h"
#include "dispatch/send_journal.h"
#include "marketingctl/campaign_names.h"
#include "marketingctl/commands.h"
#include "marketingctl/output.h"

namespace qbx::ctl {

namespace {

constexpr int kEventsShown = 50;

struct LogArguments {
  std::optional<std::string> campaign;
};

QJsonArray ReadAll(Recordset rows) {
  return RowsToJson(rows);
}

QJsonArray HistoryOf(Connection& connection, int campaignId) {
  QJsonArray events;
  for (const QJsonValue event :
       ReadAll(Procedure(connection, "proc_sel_Marketing_Campaigns_History").Open({{"@Count", 0}}))) {
    if (event[QLatin1String("CampaignID")].toInt() == campaignId) events.append(event);
  }
  return events;
}

QJsonArray GeneralEvents(Connection& connection) {
  return ReadAll(Recordset::ReadAll(connection.Driver().Execute(
      QStringLiteral(
          "SELECT TOP %1 Log_Date, Username, EventType, TableKey, Details FROM _Log (NOLOCK) ORDER BY LogID DESC")
          .arg(kEventsShown))));
}

/// What a person has to look at.
struct Troubles {
  QJsonArray doubt;
  QJsonArray failed;
};

void AddTroublesOf(Connection& connection, int campaignId, Troubles& troubles) {
  for (const QJsonValue row :
       ReadAll(Procedure(connection, "proc_selp_Send_Troubles").Open({{"@CampaignID", campaignId}}))) {
    QJsonObject object = row.toObject();
    const bool inDoubt = object.take(QStringLiteral("State")).toInt() == static_cast<int>(JournalState::kSending);
    if (inDoubt) object.remove(QStringLiteral("Reason"));
    object.insert(QStringLiteral("CampaignID"), campaignId);
    (inDoubt ? troubles.doubt : troubles.failed).append(object);
  }
}

Troubles TroublesOfAll(Connection& connection) {
  Troubles troubles;
  Recordset campaigns = Recordset::ReadAll(connection.Driver().Execute(
      QStringLiteral("SELECT DISTINCT CampaignID FROM Send_Journal (NOLOCK) WHERE State <> 1 ORDER BY CampaignID")));
  for (; !campaigns.Eof(); campaigns.MoveNext())
    AddTroublesOf(connection, static_cast<int>(campaigns.Field(0).ToInt()), troubles);
  return troubles;
}

void PrintSection(const QString& title, const QJsonArray& rows, const QStringList& columns) {
  PrintLine(title);
  if (rows.isEmpty()) {
    PrintLine(QStringLiteral("  none"));
  } else {
    PrintTable(rows, columns);
  }
  PrintLine({});
}

/// The events of one campaign, or of all.
struct Story {
  QString eventsTitle;
  QJsonArray events;
  QStringList eventColumns;
  QStringList results;
  Troubles troubles = {};
};

void Print(const Program& program, const Story& story) {
  if (program.json) {
    PrintJson(QJsonObject{{QStringLiteral("events"), story.events},
                          {QStringLiteral("results"), QJsonArray::fromStringList(story.results)},
                          {QStringLiteral("in_doubt"), story.troubles.doubt},
                          {QStringLiteral("failed"), story.troubles.failed}});
    return;
  }
  PrintSection(story.eventsTitle, story.events, story.eventColumns);
  PrintLine(QStringLiteral("Results log of the last run"));
  for (const QString& line : story.results.isEmpty() ? QStringList{QStringLiteral("  none")} : story.results)
    PrintLine(line);
  PrintLine({});
  PrintSection(
      QStringLiteral("In doubt (results ID --settle-doubt sent or not-sent settles it)"), story.troubles.doubt,
      {QStringLiteral("CampaignID"), QStringLiteral("RecordID"), QStringLiteral("Customer"), QStringLiteral("Channel"),
       QStringLiteral("Mobile"), QStringLiteral("Email"), QStringLiteral("Changed")});
  PrintSection(QStringLiteral("Failed, and due again"), story.troubles.failed,
               {QStringLiteral("CampaignID"), QStringLiteral("RecordID"), QStringLiteral("Customer"),
                QStringLiteral("Channel"), QStringLiteral("Reason")});
}

int LogOfCampaign(Program& program, int id) {
  if (!program.app.campaignStorage.LoadCampaign(id)) return kRefused;
  Troubles troubles;
  AddTroublesOf(program.app.connection, id, troubles);
  Print(program, {.eventsTitle = QStringLiteral("Events"),
                  .events = HistoryOf(program.app.connection, id),
                  .eventColumns = {QStringLiteral("ID"), QStringLiteral("Record_Date"), QStringLiteral("Event"),
                                   QStringLiteral("UserID")},
                  .results = ResultsLogFile(program.app.log.Path(), id).Read(),
                  .troubles = std::move(troubles)});
  return kDone;
}

int LogOfAll(Program& program) {
  Print(program, {.eventsTitle = QStringLiteral("The last %1 events, the newest first").arg(kEventsShown),
                  .events = GeneralEvents(program.app.connection),
                  .eventColumns = {QStringLiteral("Log_Date"), QStringLiteral("Username"), QStringLiteral("EventType"),
                                   QStringLiteral("TableKey"), QStringLiteral("Details")},
                  .results = ReadNewestResultsLog(program.app.log.Path()),
                  .troubles = TroublesOfAll(program.app.connection)});
  return kDone;
}

int Log(Program& program, const LogArguments& arguments) {
  try {
    if (!arguments.campaign) return LogOfAll(program);
    const std::optional<int> id = FindCampaign(program, *arguments.campaign);
    return id ? LogOfCampaign(program, *id) : static_cast<int>(kRefused);
  } catch (const DatabaseError& error) {
    return Refuse(error.Description());
  }
}

}  // namespace

void AddLogCommand(Runner& runner) {
  auto arguments = std::make_shared<LogArguments>();
  CLI::App& command = *runner.Root().add_subcommand(
      "log", "Show events, the results log of the last run, what is in doubt and what failed");
  command
      .add_option("--campaign", arguments->campaign,
                  "Of one campaign, by number or name, instead of the general events")
      ->type_name("ID");
  command.footer("Example: marketingctl --folder garage --user Pat log --campaign 12");
  runner.AddCommand(command, [arguments](Program& program) { return Log(program, *arguments); });
}

}  // namespace qbx::ctl
