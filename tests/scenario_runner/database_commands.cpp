#include "database/database_error.h"
#include "scenario_error.h"
#include "stage.h"
#include "util/text.h"
#include "world_commands.h"

namespace qbx::scenario {
namespace {

void DropProcedure(Stage& stage, const QString& name, bool dropped) {
  if (stage.Data().Select(QStringLiteral("SELECT 1 FROM _Procedures WHERE Name = %1").arg(SqlQuoted(name))).isEmpty())
    throw ScenarioError(QStringLiteral("There is no procedure %1.").arg(name));
  stage.troubles.DropProcedure(name, dropped);
}

// Also while the program is not running, and without opening the database as the program would.
void SetStatus(Stage& stage, const char* status) {
  stage.Data().Execute(QStringLiteral("UPDATE _Database_Status SET Status = '%1'").arg(QLatin1String(status)));
}

using Action = void (*)(Stage&, const Arguments&);

void Add(Bridge& bridge, Stage& stage, const char* name, Action action) {
  bridge.Add(QLatin1String(name), [&stage, action](const Arguments& arguments) -> QVariant {
    action(stage, arguments);
    return {};
  });
}

void AddTroubles(Bridge& bridge, Stage& stage) {
  Add(bridge, stage, "lockDatabase",
      [](Stage& on, const Arguments& arguments) { on.lock.Hold(on.Data().File(), NumberAt(arguments, 0)); });
  Add(bridge, stage, "unlockDatabase", [](Stage& on, const Arguments&) { on.lock.Release(); });
  Add(bridge, stage, "dropProcedure",
      [](Stage& on, const Arguments& arguments) { DropProcedure(on, TextAt(arguments, 0), true); });
  Add(bridge, stage, "restoreProcedure",
      [](Stage& on, const Arguments& arguments) { DropProcedure(on, TextAt(arguments, 0), false); });
  Add(bridge, stage, "failProcedure", [](Stage& on, const Arguments& arguments) {
    on.troubles.FailProcedure(TextAt(arguments, 0), TextAt(arguments, 1));
  });
  Add(bridge, stage, "slowDatabase",
      [](Stage& on, const Arguments& arguments) { on.troubles.delayMilliseconds = NumberAt(arguments, 0); });
  Add(bridge, stage, "takeOffline", [](Stage& on, const Arguments&) { SetStatus(on, "OFFLINE"); });
  Add(bridge, stage, "bringOnline", [](Stage& on, const Arguments&) { SetStatus(on, "ONLINE"); });
  Add(bridge, stage, "breakConnection", [](Stage& on, const Arguments&) { on.BreakConnections(); });
  Add(bridge, stage, "loseConnection", [](Stage& on, const Arguments&) { on.troubles.refuse = true; });
  Add(bridge, stage, "restoreConnection", [](Stage& on, const Arguments&) {
    on.troubles.refuse = false;
    if (on.Running()) on.Program().App().engine.BreakSessions();  // what was lost stays lost
  });
}

}  // namespace

void AddDatabaseCommands(Bridge& bridge, Stage& stage) {
  AddTroubles(bridge, stage);
  bridge.Add(QStringLiteral("sql"),
             [&stage](const Arguments& arguments) -> QVariant { return stage.Data().Select(TextAt(arguments, 0)); });
  bridge.Add(QStringLiteral("execute"),
             [&stage](const Arguments& arguments) -> QVariant { return stage.Data().Execute(TextAt(arguments, 0)); });
  bridge.Add(QStringLiteral("calls"), [&stage](const Arguments&) -> QVariant { return stage.troubles.Calls(); });
  bridge.Add(QStringLiteral("databaseStatus"), [&stage](const Arguments&) -> QVariant {
    return stage.Data()
        .Select(QStringLiteral("SELECT Status FROM _Database_Status"))
        .value(0)
        .toMap()
        .value(QStringLiteral("Status"));
  });
  bridge.Add(QStringLiteral("events"), [&stage](const Arguments&) -> QVariant {
    return stage.Data().Select(
        QStringLiteral("SELECT EventType AS type, TableID AS [table], TableKey AS [key], Details AS details,"
                       " Username AS user, Log_Date AS date FROM _Log ORDER BY LogID"));
  });
  bridge.Add(QStringLiteral("marketingEvents"), [&stage](const Arguments&) -> QVariant {
    return stage.Data().Select(
        QStringLiteral("SELECT Event AS event, CampaignID AS campaign, UserID AS user, Log_Date AS date"
                       " FROM _Marketing_Log ORDER BY LogID"));
  });
  bridge.Add(QStringLiteral("option"), [&stage](const Arguments& arguments) -> QVariant {
    const QString name = TextAt(arguments, 0);
    return stage.Data()
        .Select(QStringLiteral("SELECT [%1] AS value FROM _Options WHERE Options_Company = 'A'").arg(name))
        .value(0)
        .toMap()
        .value(QStringLiteral("value"));
  });
  bridge.Add(QStringLiteral("setOption"), [&stage](const Arguments& arguments) -> QVariant {
    const QVariant value = arguments.value(1);
    const QString text = value.typeId() == QMetaType::Bool || IsNumber(value) ? QString::number(value.toDouble())
                                                                              : SqlQuoted(value.toString());
    return stage.Data().Execute(
        QStringLiteral("UPDATE _Options SET [%1] = %2 WHERE Options_Company = 'A'").arg(TextAt(arguments, 0), text));
  });
}

}  // namespace qbx::scenario
