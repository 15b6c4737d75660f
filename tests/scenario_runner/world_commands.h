// What a scenario can do to the program and the world around it.

#pragma once

#include <QJsonDocument>
#include <QJsonObject>

#include "platform/ini_file.h"
#include "stage.h"

namespace qbx::scenario {

class WorldCommands final : public QObject {
  Q_OBJECT
 public:
  explicit WorldCommands(Stage& stage) : on_(stage) {}

  Q_INVOKABLE QString outcome() const { return on_.outcome; }
  Q_INVOKABLE QStringList statusTexts() const { return on_.Ui().StatusTexts(); }
  Q_INVOKABLE void clearStatusTexts() const { on_.Ui().ClearStatusTexts(); }
  Q_INVOKABLE bool busy() const { return on_.Ui().Busy(); }
  Q_INVOKABLE QVariant statusBox() const;

  Q_INVOKABLE QString programFolder() const { return on_.Folder().Path(); }
  Q_INVOKABLE QStringList files() const;
  Q_INVOKABLE QString readFile(const QString& name) const;
  Q_INVOKABLE void writeFile(const QString& name, const QString& text) const {
    on_.Folder().Write(name, text.toUtf8());
  }
  Q_INVOKABLE void removeFile(const QString& name) const;
  Q_INVOKABLE QStringList log() const;
  Q_INVOKABLE QString ini(const QString& section, const QString& key) const { return Ini().Read(section, key); }
  Q_INVOKABLE void setIni(const QString& section, const QString& key, const QString& value) const;

  Q_INVOKABLE QString registry(const QString& hive, const QString& path, const QString& name) const {
    return on_.registry.Get(Stage::ReadHive(hive), on_.RegistryPath(path), name);
  }
  Q_INVOKABLE void setRegistry(const QString& hive, const QString& path, const QString& name, const QString& value) {
    on_.registry.Put(Stage::ReadHive(hive), on_.RegistryPath(path), name, value);
  }
  Q_INVOKABLE QStringList shellOpened() const { return on_.shell.opened; }
  Q_INVOKABLE QStringList shellCommands() const { return on_.shell.commands; }
  Q_INVOKABLE QStringList serviceRequests() const { return on_.services.requests; }
  Q_INVOKABLE QVariantList printJobs() const;
  Q_INVOKABLE void printerFails(const QString& problem) const { on_.printers.problem = problem; }
  Q_INVOKABLE void printersAnswer(bool answer) const { on_.printers.silent = !answer; }
  Q_INVOKABLE QString clock() const { return on_.clock.Now().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")); }
  Q_INVOKABLE void setClock(const QString& time) const { on_.clock.Set(ReadTime(time)); }
  Q_INVOKABLE void advanceClock(int seconds) const { on_.clock.AdvanceSeconds(seconds); }
  Q_INVOKABLE void steer(const QVariantMap& wishes) const {
    on_.Sandbox().Steer(QJsonDocument(QJsonObject::fromVariantMap(wishes)).toJson(QJsonDocument::Compact));
  }

 public Q_SLOTS:
  void prepare(const QVariantMap& wishes, bool fresh) const { on_.Prepare(wishes, fresh); }
  QString launch() const { return on_.Launch(); }
  QString commandLine() const { return on_.CommandLine(); }
  void startAnother(const QString& code) const {
    on_.End();
    on_.another.Start(code, on_.Folder().Path());
  }
  void expectAnother() const { on_.another.ExpectRunning(); }
  void killAnother() const { on_.another.Kill(); }
  QString sandbox(const QString& path) const { return QString::fromUtf8(on_.Sandbox().Ask(path)); }
  void setCredits(int credits) const { on_.Sandbox().SetCredits(credits); }

 private:
  [[nodiscard]] IniFile Ini() const { return IniFile(on_.Folder().File(QStringLiteral("QBX.INI"))); }

  Stage& on_;
};

}  // namespace qbx::scenario
