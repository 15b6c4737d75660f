#include "startup/start_sequence.h"

#include <QVersionNumber>

#include "settings/edition_names.h"
#include "settings/run_key.h"
#include "startup/command_line.h"
#include "startup/program_version.h"
#include "util/text.h"

namespace qbx {
namespace {

void SetVersions(StartupValues& startup) {
  const QVersionNumber version = QVersionNumber::fromString(ProgramVersion());
  const int revision = version.microVersion();
  startup.shortVersion = QStringLiteral("%1.%2").arg(version.majorVersion()).arg(version.minorVersion());
  startup.fullVersion = QStringLiteral("%1.%2").arg(startup.shortVersion).arg(revision);
  if (revision > 0) startup.shortVersion = startup.fullVersion;
}

void Call(const std::function<void()>& step) {
  if (step) step();
}

}  // namespace

StartOutcome StartSequence::Run(const QString& commandLine, const StartWindows& windows) {
  Prepare();
  Call(windows.showSplash);
  StartupValues& startup = parts_.startup;
  startup.commandLine = commandLine;
  if (!commandLine.isEmpty()) ParseCommandLine(startup, parts_.diagnostics.ui);
  // A line without a known switch is handled below. Only a start that could have named a user is refused for lacking
  // one.
  const bool stopping = !startup.commandLine.isEmpty();
  if (startup.user.isEmpty() && !stopping) {
    Refuse();
    Call(windows.closeSplash);
    return StartOutcome::kRefused;
  }
  SettleNames(startup.DatabaseSuffix.isEmpty());
  if (stopping) {
    Stop();
    Call(windows.closeSplash);
    return StartOutcome::kStopped;
  }
  Work();
  if (parts_.diagnostics.ui.QuitRequested()) {
    Call(windows.closeSplash);
    return StartOutcome::kStopped;
  }
  RememberNames();
  Call(windows.openWindows);
  parts_.diagnostics.ui.PumpEvents();
  Call(windows.closeSplash);
  return StartOutcome::kRunning;
}

void StartSequence::PrepareHeadless(const HeadlessStart& request) {
  Prepare();
  StartupValues& startup = parts_.startup;
  startup.user = CutText(TrimBlanks(request.user), kMaxUser);
  startup.instance = InstanceName(request.instance);
  WorkOutEditionNames(startup);
}

void StartSequence::SettleHeadlessNames(const HeadlessStart& request) {
  if (!request.databaseName.isEmpty()) parts_.startup.databaseName = request.databaseName;
  SettleNames(request.databaseName.isEmpty());
}

StartOutcome StartSequence::RunHeadless(const HeadlessStart& request) {
  PrepareHeadless(request);
  if (parts_.startup.user.isEmpty()) {
    Refuse();
    return StartOutcome::kRefused;
  }
  SettleHeadlessNames(request);
  Work();
  // A mistyped name must not be used at the next start of the windows.
  if (parts_.hostConnection.Ready()) RememberNames();
  return StartOutcome::kRunning;
}

StartOutcome StartSequence::SettleHeadless(const HeadlessStart& request) {
  PrepareHeadless(request);
  SettleHeadlessNames(request);
  return StartOutcome::kRunning;
}

void StartSequence::Prepare() {
  StartupValues& startup = parts_.startup;
  startup.DatabaseSuffix.clear();
  SetVersions(startup);
  startup.edition = EditionOfFolder(startup.ProgramFolder, parts_.ini);
  ReadIniFile();
  WorkOutEditionNames(startup);
}

void StartSequence::ReadIniFile() {
  const QString section = QStringLiteral("App");
  StartupValues& startup = parts_.startup;
  startup.customerCode = parts_.ini.Read(section, QStringLiteral("Customer")).toLower();
  const QString debug = parts_.ini.Read(section, QStringLiteral("Debug"), QStringLiteral("NO"));
  startup.debug = EqualsNoCase(TrimBlanks(debug), QStringLiteral("YES"));
  if (startup.debug) parts_.log.WriteLog(QStringLiteral("Debug Option specified."));
}

void StartSequence::SettleNames(bool mayOverride) {
  StartupValues& startup = parts_.startup;
  const QString stored = TrimBlanks(parts_.registry.sysLoadValueFromLocalMachine({}, QStringLiteral("Database")));
  if (mayOverride && !stored.isEmpty()) startup.databaseName = stored;
  parts_.diagnostics.ui.SetApplicationTitle(startup.title);
}

void StartSequence::Refuse() {
  UserInterface& ui = parts_.diagnostics.ui;
  const QString given = ui.ApplicationTitle();
  const QString title = given.isEmpty() ? QString::fromLatin1(kProgramTitle) : given;
  ui.ShowMessage({.text = QStringLiteral("Please run ") + title + QStringLiteral(" from within the main QBX program."),
                  .icon = MessageIcon::kExclamation,
                  .title = title});
}

void StartSequence::Stop() {
  UserInterface& ui = parts_.diagnostics.ui;
  parts_.diagnostics.status.ShowStatus(ui.ApplicationTitle() + QStringLiteral(" will now exit."));
  ui.Pause(2000);
  parts_.diagnostics.status.Close();
}

void StartSequence::Work() {
  StartupValues& startup = parts_.startup;
  parts_.context.user = startup.user;
  startup.RunKey = MakeRunKey(startup.user, parts_.diagnostics.clock.Now());
  parts_.hostConnection.GetDatabaseSettings();
  if (parts_.diagnostics.ui.QuitRequested()) return;
  parts_.events.LogEvent(kEventMarketing, 0, QString::fromLatin1(kMarketingKey),
                         QStringLiteral("Login: %1 on Computer: ").arg(startup.user) + parts_.host.ComputerName());
  parts_.campaigns.InitialiseCampaign();
  parts_.log.SetPath(parts_.registry.sysLoadValueFromLocalMachine({}, QStringLiteral("LogfileName")));
}

void StartSequence::RememberNames() {
  const StartupValues& startup = parts_.startup;
  parts_.ini.Write(QStringLiteral("Database"), QStringLiteral("Name"), startup.databaseName);
  parts_.ini.Write(QStringLiteral("App"), QStringLiteral("Instance"), startup.instance);
}

}  // namespace qbx
