#include "stage.h"

#include <QApplication>
#include <QDir>

#include "hostdb/sample_garage.h"
#include "platform/ini_file.h"
#include "scenario_error.h"
#include "util/text.h"

namespace qbx::scenario {
namespace {

QString SqlValue(const QVariant& value) {
  if (value.isNull()) return QStringLiteral("NULL");
  if (value.typeId() == QMetaType::Bool) return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
  if (IsNumber(value)) return value.toString();
  return SqlQuoted(value.toString());
}

QString Assignments(const QVariantMap& values) {
  QStringList parts;
  for (auto value = values.begin(); value != values.end(); ++value)
    parts += QStringLiteral("[%1] = %2").arg(value.key(), SqlValue(value.value()));
  return parts.join(QStringLiteral(", "));
}

// Locks the rows of all campaigns on a server until the session ends.
std::shared_ptr<void> LockRows(const qbx::test::ServedFolder& served) {
  std::shared_ptr<Session> session = served.Connect();
  session->Begin();
  session->Execute(QStringLiteral("UPDATE [Campaign Results] SET CampaignID = CampaignID"));
  return session;
}

}  // namespace

QDateTime ReadTime(const QString& text) {
  for (const char* format : {"yyyy-MM-dd HH:mm:ss", "yyyy-MM-dd HH:mm", "yyyy-MM-dd"}) {
    QDateTime time = QDateTime::fromString(text, QLatin1String(format));
    if (time.isValid()) return time;
  }
  throw ScenarioError(QStringLiteral("\"%1\" is no time like \"2026-03-04 10:20\".").arg(text));
}

Stage::Stage(Bridge& bridge, const QString& screenshots, const QString& folder)
    : bridge_(bridge), screenshots_(screenshots) {
  if (folder.isEmpty()) return;
  folder_ = std::make_unique<qbx::test::TempFolder>(folder);
  computer.processId = QCoreApplication::applicationPid();
  computer.processes = {{computer.processId, 1}};
}

Stage::~Stage() {
  End();
}

void Stage::Prepare(const QVariantMap& options, bool fresh) {
  if (!fresh && folder_ == nullptr) throw ScenarioError(QStringLiteral("restart needs a start before it."));
  // Reads the wishes first, so that a misspelt one does not end the program.
  QVariantMap merged = options;
  if (!fresh && !merged.contains(QStringLiteral("commandLine")) && !merged.contains(QStringLiteral("user")))
    merged.insert(QStringLiteral("commandLine"), wishes_["commandLine"]);
  StartWishes wishes(merged);
  End();
  if (!fresh) wishes.KeepDatabase(wishes_);
  if (fresh) {
    data_.reset();
    folder_ = std::make_unique<qbx::test::TempFolder>();
    sandbox_.reset();
    registry = {};
    clock = qbx::test::FixedClock();
    services = {};
    shell = {};
    printers = {};
  }
  troubles.Reset();
  troubles.refuse = !wishes["reachable"].toBool();
  if (!wishes.Text("clock").isEmpty()) clock.Set(ReadTime(wishes.Text("clock")));
  PutFiles(wishes);
  names_ = wishes.Names(folder_->Path());
  const bool named = options.contains(QStringLiteral("garage"));
  if (fresh || named) MakeGarage(wishes["garage"]);
  data_ = std::make_unique<HostData>(folder_->File(names_.databaseName + QStringLiteral(".db")), clock);
  if (qbx::test::ServerUnderTest::IsSqlServer()) UseSqlServer(fresh || named);
  PutRegistry(wishes);
  const QVariantMap states = wishes.Map("services");
  for (auto service = states.begin(); service != states.end(); ++service)
    services.states.insert(service.key(),
                           service.value() == "running" ? ServiceState::kRunning : ServiceState::kStopped);
  const QVariant sandbox = wishes["sandbox"];
  if (sandbox.toBool() || sandbox.typeId() == QMetaType::QVariantMap) UseSandbox(sandbox.toMap().value("credits"));
  PutOptions(wishes);
  wishes_ = wishes;
}

void Stage::MakeGarage(const QVariant& wish) {
  const QString file = folder_->File(names_.databaseName + QStringLiteral(".db"));
  const QString kind = wish.toString();
  HostDatabaseProblem problem;
  if (kind == "none") {
    QFile::remove(file);
  } else if (kind == "empty") {
    problem = CreateHostDatabase(file, ExistingFile::kReplace);
  } else {
    QVariantMap size = wish.toMap();
    if (IsNumber(wish)) size.insert("customers", wish);
    problem = MakeSampleGarage(file,
                               {.customers = size.value("customers", 60).toInt(),
                                .seed = size.value("seed", 1).toULongLong(),
                                .asOf = clock.Now().date()},
                               ExistingFile::kReplace);
  }
  if (problem) throw ScenarioError(*problem);
}

void Stage::UseSqlServer(bool fill) {
  const qbx::test::ServedFolder served(folder_->Path(), clock, names_.databaseName);
  if (server_ == nullptr) server_ = served.Connect();
  if (fill && QFile::exists(data_->File())) served.Fill();
  data_->UseServer(*server_);
}

void Stage::PutFiles(const StartWishes& wishes) const {
  const QString edition = wishes.EditionFile();
  if (!edition.isEmpty()) folder_->Write(edition, {});
  for (const QVariant& name : wishes["files"].toList())
    folder_->Write(name.toString(), {});
  const QVariantMap files = wishes.Map("files");
  for (auto file = files.begin(); file != files.end(); ++file)
    folder_->Write(file.key(), file.value().toString().toUtf8());
  const QVariantMap sections = wishes.Map("ini");
  IniFile ini(folder_->File(QStringLiteral("QBX.INI")));
  for (auto section = sections.begin(); section != sections.end(); ++section) {
    const QVariantMap keys = section.value().toMap();
    for (auto key = keys.begin(); key != keys.end(); ++key) {
      if (!ini.Write(section.key(), key.key(), key.value().toString()))
        throw ScenarioError(QStringLiteral("QBX.INI cannot hold %1=%2.").arg(key.key(), key.value().toString()));
    }
  }
}

void Stage::PutRegistry(const StartWishes& wishes) {
  const QVariantMap hives = wishes.Map("registry");
  for (auto hive = hives.begin(); hive != hives.end(); ++hive) {
    const QVariantMap paths = hive.value().toMap();
    for (auto path = paths.begin(); path != paths.end(); ++path) {
      const QVariantMap values = path.value().toMap();
      for (auto value = values.begin(); value != values.end(); ++value)
        registry.Put(ReadHive(hive.key()), RegistryPath(path.key()), value.key(), value.value().toString());
    }
  }
}

RegistryHive Stage::ReadHive(const QString& name) {
  if (name == QLatin1String("machine")) return RegistryHive::kLocalMachine;
  if (name == QLatin1String("user")) return RegistryHive::kCurrentUser;
  throw ScenarioError(QStringLiteral("There is no hive \"%1\" but machine and user.").arg(name));
}

QString Stage::RegistryPath(const QString& path) const {
  if (path.startsWith(QLatin1String("SOFTWARE\\"))) return path;
  const QString key = names_.productKey + path;
  return key.endsWith(QLatin1Char('\\')) ? key.chopped(1) : key;
}

void Stage::PutOptions(const StartWishes& wishes) {
  if (!wishes.Map("options").isEmpty())
    data_->Execute(
        QStringLiteral("UPDATE _Options SET %1 WHERE Options_Company = 'A'").arg(Assignments(wishes.Map("options"))));
  if (wishes.Map("userOptions").isEmpty()) return;
  const QString user = SqlQuoted(wishes.Text("user"));
  data_->Execute(
      QStringLiteral(
          "INSERT INTO _OptionsUser (UserId) SELECT %1 WHERE NOT EXISTS (SELECT 1 FROM _OptionsUser WHERE UserId = %1); UPDATE _OptionsUser SET %2 WHERE UserId = %1")
          .arg(user, Assignments(wishes.Map("userOptions"))));
}

void Stage::UseSandbox(const QVariant& credits) {
  if (sandbox_ == nullptr)
    sandbox_ = std::make_unique<qbx::test::SandboxProcess>(
        credits.isValid() ? QStringList{QStringLiteral("--credits"), credits.toString()} : QStringList());
  data_->Execute(QStringLiteral("UPDATE _Options SET SMS_Server = %1, SMTP_Server = '127.0.0.1', SMTP_Port = '%2' "
                                "WHERE Options_Company = 'A'")
                     .arg(SqlQuoted(sandbox_->Gateway()))
                     .arg(sandbox_->SmtpPort()));
}

QString Stage::Launch() {
  if (folder_ == nullptr) throw ScenarioError(QStringLiteral("Nothing was prepared to start."));
  ui_ = std::make_unique<ScenarioUi>(clock, [this] { bridge_.Invoke(QStringLiteral("pump")); });
  ui_->UseRealPauses(wishes_["realPauses"].toBool());
  served_ = std::make_unique<qbx::test::ServedFolder>(folder_->Path(), clock);
  const ApplicationSetup setup{
      .ui = *ui_,
      .clock = clock,
      .folders = {folder_->Path() + QLatin1Char('/'), folder_->File(QStringLiteral("registry"))},
      .host = &computer,
      .registry = &registry,
      .services = &services,
      .shell = &shell,
      .printers = &printers,
      .wrapSessions = [this](SessionFactory inner) { return WithTroubles(served_->Wrap(std::move(inner)), troubles); }};
  program_ = std::make_unique<MarketingProgram>(*ui_, setup);
  const StartOutcome started = program_->Start(CommandLine());
  outcome = started == StartOutcome::kRefused ? "refused" : started == StartOutcome::kStopped ? "stopped" : "running";
  QCoreApplication::processEvents();
  return outcome;
}

void Stage::LockDatabase(int milliseconds) {
  lock.Hold([this, data = &Data()] { return server_ == nullptr ? data->LockFile() : LockRows(*served_); },
            milliseconds);
}

void Stage::BreakConnections() {
  Program().App().engine.BreakSessions();
  served_->BreakSessions();
  if (server_ != nullptr) data_->EndOtherSessions();
}

void Stage::End() {
  lock.Release();
  troubles.Reset();
  program_.reset();
  served_.reset();
  ui_.reset();
}

HostData& Stage::Data() {
  if (data_ == nullptr) throw ScenarioError(QStringLiteral("There is no garage before start."));
  return *data_;
}

MarketingProgram& Stage::Program() {
  if (program_ == nullptr) throw ScenarioError(QStringLiteral("The program was not started."));
  return *program_;
}

ScenarioUi& Stage::Ui() {
  if (ui_ == nullptr) throw ScenarioError(QStringLiteral("The program was not started."));
  return *ui_;
}

const qbx::test::TempFolder& Stage::Folder() const {
  if (folder_ == nullptr) throw ScenarioError(QStringLiteral("There is no program folder before start."));
  return *folder_;
}

qbx::test::SandboxProcess& Stage::Sandbox() {
  if (sandbox_ == nullptr)
    throw ScenarioError(QStringLiteral("The scenario has no sandbox; start({sandbox: true}) makes one."));
  return *sandbox_;
}

QString Stage::ScreenshotFile(const QString& name) const {
  if (screenshots_.isEmpty()) return {};
  QDir().mkpath(screenshots_);
  return QDir(screenshots_).filePath(name + QStringLiteral(".png"));
}

}  // namespace qbx::scenario
