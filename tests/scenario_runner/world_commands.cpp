#include "world_commands.h"

#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtWidgets/QLabel>

#include "find_control.h"
#include "platform/ini_file.h"
#include "scenario_error.h"
#include "stage.h"

namespace qbx::scenario {
namespace {

using Get = QVariant (*)(Stage&, const Arguments&);
using Do = void (*)(Stage&, const Arguments&);

void AddGet(Bridge& bridge, Stage& stage, const char* name, Get get) {
  bridge.Add(QLatin1String(name), [&stage, get](const Arguments& arguments) { return get(stage, arguments); });
}

void AddDo(Bridge& bridge, Stage& stage, const char* name, Do action) {
  bridge.Add(QLatin1String(name), [&stage, action](const Arguments& arguments) -> QVariant {
    action(stage, arguments);
    return {};
  });
}

void AddProgramCommands(Bridge& bridge, Stage& stage) {
  AddDo(bridge, stage, "prepare", [](Stage& on, const Arguments& arguments) {
    on.Prepare(arguments.value(0).toMap(), arguments.value(1).toBool());
  });
  AddGet(bridge, stage, "launch", [](Stage& on, const Arguments&) -> QVariant { return on.Launch(); });
  AddDo(bridge, stage, "startAnother", [](Stage& on, const Arguments& arguments) {
    on.End();
    on.another.Start(TextAt(arguments, 0), on.Folder().Path());
  });
  AddDo(bridge, stage, "expectAnother", [](Stage& on, const Arguments&) { on.another.ExpectRunning(); });
  AddDo(bridge, stage, "killAnother", [](Stage& on, const Arguments&) { on.another.Kill(); });
  AddGet(bridge, stage, "commandLine", [](Stage& on, const Arguments&) -> QVariant { return on.CommandLine(); });
  AddGet(bridge, stage, "outcome", [](Stage& on, const Arguments&) -> QVariant { return on.outcome; });
  AddGet(bridge, stage, "statusTexts", [](Stage& on, const Arguments&) -> QVariant { return on.Ui().StatusTexts(); });
  AddDo(bridge, stage, "clearStatusTexts", [](Stage& on, const Arguments&) { on.Ui().ClearStatusTexts(); });
  AddGet(bridge, stage, "busy", [](Stage& on, const Arguments&) -> QVariant { return on.Ui().Busy(); });
  AddGet(bridge, stage, "statusBox", [](Stage& on, const Arguments&) -> QVariant {
    const auto* text = qobject_cast<QLabel*>(TryFindControl(QStringLiteral("frmProcessing.lblMessage")));
    if (!on.Ui().StatusVisible() || text == nullptr) return QVariant::fromValue(nullptr);
    const auto* cancel = qobject_cast<QWidget*>(TryFindControl(QStringLiteral("frmProcessing.cmdCancel")));
    return QVariantMap{{QStringLiteral("text"), PlainLines(text->text())},
                       {QStringLiteral("cancel"), cancel != nullptr && cancel->isVisible()}};
  });
}

QString ReadText(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    throw ScenarioError(QStringLiteral("%1 cannot be read: %2").arg(path, file.errorString()));
  return QString::fromUtf8(file.readAll());
}

QVariant LogLines(Stage& stage) {
  const QString path = stage.Folder().File(QStringLiteral("MARKETING.LOG"));
  if (!QFile::exists(path)) return QStringList();
  QStringList lines = ReadText(path).split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
  for (QString& line : lines)
    line = PlainLines(line);
  return lines;
}

QVariant FileNames(Stage& stage) {
  const QDir folder(stage.Folder().Path());
  QStringList names;
  QDirIterator files(folder.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
  while (files.hasNext())
    names += folder.relativeFilePath(files.next());
  names.sort();
  return names;
}

void AddFileCommands(Bridge& bridge, Stage& stage) {
  AddGet(bridge, stage, "programFolder", [](Stage& on, const Arguments&) -> QVariant { return on.Folder().Path(); });
  AddGet(bridge, stage, "log", [](Stage& on, const Arguments&) { return LogLines(on); });
  AddGet(bridge, stage, "files", [](Stage& on, const Arguments&) { return FileNames(on); });
  AddGet(bridge, stage, "readFile", [](Stage& on, const Arguments& arguments) -> QVariant {
    return ReadText(QDir(on.Folder().Path()).filePath(TextAt(arguments, 0)));
  });
  AddDo(bridge, stage, "writeFile", [](Stage& on, const Arguments& arguments) {
    on.Folder().Write(TextAt(arguments, 0), TextAt(arguments, 1).toUtf8());
  });
  AddDo(bridge, stage, "removeFile", [](Stage& on, const Arguments& arguments) {
    if (!QFile::remove(on.Folder().File(TextAt(arguments, 0))))
      throw ScenarioError(QStringLiteral("There is no file %1.").arg(TextAt(arguments, 0)));
  });
  AddGet(bridge, stage, "ini", [](Stage& on, const Arguments& arguments) -> QVariant {
    return IniFile(on.Folder().File(QStringLiteral("QBX.INI"))).Read(TextAt(arguments, 0), TextAt(arguments, 1));
  });
  AddDo(bridge, stage, "setIni", [](Stage& on, const Arguments& arguments) {
    if (!IniFile(on.Folder().File(QStringLiteral("QBX.INI")))
             .Write(TextAt(arguments, 0), TextAt(arguments, 1), TextAt(arguments, 2)))
      throw ScenarioError(QStringLiteral("QBX.INI could not be written."));
  });
}

QVariant PrintJobs(const Stage& stage) {
  QVariantList jobs;
  for (const auto& [printer, job, pdf] : stage.printers.printed)
    jobs.append(QVariantMap{{QStringLiteral("printer"), printer},
                            {QStringLiteral("title"), job.title},
                            {QStringLiteral("copies"), job.copies},
                            {QStringLiteral("bothSides"), job.bothSides},
                            {QStringLiteral("tray"), job.tray},
                            {QStringLiteral("pages"), pdf.count("/Type /Page\n")}});
  return jobs;
}

void AddComputerCommands(Bridge& bridge, Stage& stage) {
  AddGet(bridge, stage, "registry", [](Stage& on, const Arguments& arguments) -> QVariant {
    return on.registry.Get(Stage::ReadHive(TextAt(arguments, 0)), on.RegistryPath(TextAt(arguments, 1)),
                           TextAt(arguments, 2));
  });
  AddDo(bridge, stage, "setRegistry", [](Stage& on, const Arguments& arguments) {
    on.registry.Put(Stage::ReadHive(TextAt(arguments, 0)), on.RegistryPath(TextAt(arguments, 1)), TextAt(arguments, 2),
                    TextAt(arguments, 3));
  });
  AddGet(bridge, stage, "shellOpened", [](Stage& on, const Arguments&) -> QVariant { return on.shell.opened; });
  AddGet(bridge, stage, "shellCommands", [](Stage& on, const Arguments&) -> QVariant { return on.shell.commands; });
  AddGet(bridge, stage, "printJobs", [](Stage& on, const Arguments&) -> QVariant { return PrintJobs(on); });
  AddDo(bridge, stage, "printerFails",
        [](Stage& on, const Arguments& arguments) { on.printers.problem = TextAt(arguments, 0); });
  AddGet(bridge, stage, "serviceRequests",
         [](Stage& on, const Arguments&) -> QVariant { return on.services.requests; });
  AddGet(bridge, stage, "clock", [](Stage& on, const Arguments&) -> QVariant {
    return on.clock.Now().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
  });
  AddDo(bridge, stage, "setClock",
        [](Stage& on, const Arguments& arguments) { on.clock.Set(ReadTime(TextAt(arguments, 0))); });
  AddDo(bridge, stage, "advanceClock",
        [](Stage& on, const Arguments& arguments) { on.clock.AdvanceSeconds(NumberAt(arguments, 0)); });
}

void AddSandboxCommands(Bridge& bridge, Stage& stage) {
  AddGet(bridge, stage, "sandbox", [](Stage& on, const Arguments& arguments) -> QVariant {
    return QString::fromUtf8(on.Sandbox().Ask(TextAt(arguments, 0)));
  });
  AddDo(bridge, stage, "steer", [](Stage& on, const Arguments& arguments) {
    on.Sandbox().Steer(
        QJsonDocument(QJsonObject::fromVariantMap(arguments.value(0).toMap())).toJson(QJsonDocument::Compact));
  });
  AddDo(bridge, stage, "setCredits",
        [](Stage& on, const Arguments& arguments) { on.Sandbox().SetCredits(NumberAt(arguments, 0)); });
}

}  // namespace

void AddWorldCommands(Bridge& bridge, Stage& stage) {
  AddProgramCommands(bridge, stage);
  AddDatabaseCommands(bridge, stage);
  AddFileCommands(bridge, stage);
  AddComputerCommands(bridge, stage);
  AddSandboxCommands(bridge, stage);
}

}  // namespace qbx::scenario
