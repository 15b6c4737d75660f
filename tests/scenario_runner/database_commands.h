// What a scenario can do to the host database.

#pragma once

#include "scenario_error.h"
#include "stage.h"
#include "util/text.h"

namespace qbx::scenario {

class DatabaseCommands final : public QObject {
  Q_OBJECT
 public:
  explicit DatabaseCommands(Stage& stage) : on_(stage) {}

  Q_INVOKABLE QVariantList sql(const QString& select) const { return on_.Data().Select(select); }
  Q_INVOKABLE int execute(const QString& statements) const { return on_.Data().Execute(statements); }
  Q_INVOKABLE QStringList calls() const { return on_.troubles.Calls(); }
  Q_INVOKABLE QVariantList events() const {
    return sql(
        "SELECT EventType AS type, TableID AS [table], TableKey AS [key], Details AS details, Username AS [user], "
        "Log_Date AS date FROM _Log ORDER BY LogID");
  }
  Q_INVOKABLE QVariantList marketingEvents() const {
    return sql(
        "SELECT Event AS event, CampaignID AS campaign, UserID AS [user], Log_Date AS date FROM _Marketing_Log "
        "ORDER BY LogID");
  }

  Q_INVOKABLE void lockDatabase(int milliseconds) const { on_.LockDatabase(milliseconds); }
  Q_INVOKABLE void unlockDatabase() const { on_.lock.Release(); }
  Q_INVOKABLE void slowDatabase(int milliseconds) const { on_.troubles.delayMilliseconds = milliseconds; }
  Q_INVOKABLE void dropProcedure(const QString& name) const { SetDropped(name, true); }
  Q_INVOKABLE void restoreProcedure(const QString& name) const { SetDropped(name, false); }
  Q_INVOKABLE void failProcedure(const QString& name, const QString& text) const {
    on_.troubles.FailProcedure(name, text);
  }
  Q_INVOKABLE QVariant databaseStatus() const { return First("SELECT Status FROM _Database_Status"); }
  Q_INVOKABLE void takeOffline() const { SetStatus("OFFLINE"); }
  Q_INVOKABLE void bringOnline() const { SetStatus("ONLINE"); }
  Q_INVOKABLE void breakConnection() const { on_.BreakConnections(); }
  Q_INVOKABLE void loseConnection() const { on_.troubles.refuse = true; }
  Q_INVOKABLE void restoreConnection() const {
    on_.troubles.refuse = false;
    if (on_.Running()) breakConnection();  // lost sessions stay lost
  }

 public Q_SLOTS:
  QVariant readOption(const QString& name) const {
    return First(QStringLiteral("SELECT [%1] FROM _Options WHERE Options_Company = 'A'").arg(name));
  }
  int writeOption(const QString& name, const QVariant& value) const {
    const bool number = value.typeId() == QMetaType::Bool || IsNumber(value);
    return execute(QStringLiteral("UPDATE _Options SET [%1] = %2 WHERE Options_Company = 'A'")
                       .arg(name, number ? QString::number(value.toDouble()) : SqlQuoted(value.toString())));
  }

 private:
  [[nodiscard]] QVariant First(const QString& select) const { return sql(select).value(0).toMap().values().value(0); }

  void SetDropped(const QString& name, bool dropped) const {
    if (sql(QStringLiteral("SELECT 1 FROM _Procedures WHERE Name = %1").arg(SqlQuoted(name))).isEmpty())
      throw ScenarioError(QStringLiteral("There is no procedure %1.").arg(name));
    on_.troubles.DropProcedure(name, dropped);
  }

  // Also works while the program is not running, without opening the database like the program.
  void SetStatus(const char* status) const {
    execute(QStringLiteral("UPDATE _Database_Status SET Status = '%1'").arg(QLatin1String(status)));
  }

  Stage& on_;
};

}  // namespace qbx::scenario
