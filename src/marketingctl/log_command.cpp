// marketingctl log: events, the last results log, and what is in doubt.

#include <memory>

#include "database/procedure.h"
#include "marketingctl/commands.h"
#include "marketingctl/output.h"
#include "marketingctl/results_log_file.h"

namespace qbx::ctl {

namespace {

constexpr int kEventsShown = 50;

struct LogArguments {
  std::optional<int> campaign;
};

QJsonArray ReadAll(Recordset rows) {
  return RowsToJson(rows);
}

QJsonArray HistoryOf(Connection& connection, int campaignId) {
  QJsonArray events;
  for (const QJsonValue& event :
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

QJsonArray DoubtOf(Connection& connection, int campaignId) {
  return ReadAll(Procedure(connection, "proc_selp_Send_Journal_Doubt").Open({{"@CampaignID", campaignId}}));
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

int LogOfCampaign(Program& program, int id) {
  if (!program.app.campaignStorage.LoadCampaign(id)) return kRefused;
  const QJsonArray events = HistoryOf(program.app.connection, id);
  const QStringList lines = ResultsLogFile(program.app.log.Path(), id).Read();
  const QJsonArray doubt = DoubtOf(program.app.connection, id);
  if (program.json) {
    PrintJson(QJsonObject{{QStringLiteral("events"), events},
                          {QStringLiteral("results"), QJsonArray::fromStringList(lines)},
                          {QStringLiteral("in_doubt"), doubt}});
    return kDone;
  }
  PrintSection(
      QStringLiteral("Events"), events,
      {QStringLiteral("ID"), QStringLiteral("Record_Date"), QStringLiteral("Event"), QStringLiteral("UserID")});
  PrintLine(QStringLiteral("Results log of the last run"));
  for (const QString& line : lines.isEmpty() ? QStringList{QStringLiteral("  none")} : lines)
    PrintLine(line);
  PrintLine({});
  PrintSection(QStringLiteral("In doubt (tick or untick Processed of the row to settle it)"), doubt,
               {QStringLiteral("RecordID"), QStringLiteral("Customer"), QStringLiteral("Channel"),
                QStringLiteral("Mobile"), QStringLiteral("Email"), QStringLiteral("Changed")});
  return kDone;
}

int Log(Program& program, const LogArguments& arguments) {
  try {
    if (arguments.campaign) return LogOfCampaign(program, *arguments.campaign);
    const QJsonArray events = GeneralEvents(program.app.connection);
    if (program.json) {
      PrintJson(QJsonObject{{QStringLiteral("events"), events}});
    } else {
      PrintSection(QStringLiteral("The last %1 events, the newest first").arg(kEventsShown), events,
                   {QStringLiteral("Log_Date"), QStringLiteral("Username"), QStringLiteral("EventType"),
                    QStringLiteral("TableKey"), QStringLiteral("Details")});
    }
    return kDone;
  } catch (const DatabaseError& error) {
    return Refuse(error.Description());
  }
}

}  // namespace

void AddLogCommand(Runner& runner) {
  auto arguments = std::make_shared<LogArguments>();
  CLI::App& command =
      *runner.Root().add_subcommand("log", "Show events, the results log of the last run and what is in doubt");
  command.add_option("--campaign", arguments->campaign, "Of one campaign instead of the general events")
      ->type_name("ID");
  command.footer("Example: marketingctl --folder garage --user Pat log --campaign 12");
  runner.AddCommand(command, [arguments](Program& program) { return Log(program, *arguments); });
}

}  // namespace qbx::ctl
