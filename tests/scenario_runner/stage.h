// The world around the program of one scenario: folder, host database, registry, computer, sandbox, clock, and the
// program itself.

#pragma once

#include <QString>
#include <memory>

#include "another_process.h"
#include "bridge.h"
#include "database_lock.h"
#include "host_data.h"
#include "marketing/program.h"
#include "scenario_ui.h"
#include "start_wishes.h"
#include "support/fakes.h"
#include "support/fixed_clock.h"
#include "support/memory_registry_store.h"
#include "support/sandbox_process.h"
#include "support/temp_folder.h"
#include "support/wire/server_under_test.h"
#include "troubled_session.h"

namespace qbx::scenario {

class Stage {
 public:
  /// \param screenshots  folder for pictures, empty for none
  /// \param folder       program folder of another runner, which `restart` uses; empty: none
  Stage(Bridge& bridge, const QString& screenshots, const QString& folder);
  ~Stage();
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  /// Ends the program and prepares the next start.
  /// \param fresh  true: a new folder, garage, registry and clock; false: keeps them from the last start, with the
  ///               changes in the wishes
  /// \throws ScenarioError
  void Prepare(const QVariantMap& options, bool fresh);
  /// \return "running", "refused" or "stopped"
  QString Launch();
  /// Ends the program and releases the database.
  void End();

  /// \throws ScenarioError unless a start was prepared
  [[nodiscard]] HostData& Data();
  [[nodiscard]] MarketingProgram& Program();
  [[nodiscard]] bool Running() const { return program_ != nullptr; }
  [[nodiscard]] ScenarioUi& Ui();
  [[nodiscard]] const qbx::test::TempFolder& Folder() const;
  [[nodiscard]] qbx::test::SandboxProcess& Sandbox();
  /// The command line of the last start.
  [[nodiscard]] QString CommandLine() const { return wishes_.Text("commandLine"); }
  /// "machine" or "user". \throws ScenarioError
  [[nodiscard]] static RegistryHive ReadHive(const QString& name);
  /// A path below the host product's key. A path that begins with "SOFTWARE\" stays unchanged.
  [[nodiscard]] QString RegistryPath(const QString& path) const;
  [[nodiscard]] QString ScreenshotFile(const QString& name) const;

  qbx::test::FixedClock clock;
  qbx::test::MemoryRegistryStore registry;
  qbx::test::FakeHostInfo computer;
  qbx::test::FakeServices services;
  qbx::test::FakeShell shell;
  qbx::test::FakePrinters printers;
  Troubles troubles;
  DatabaseLock lock;
  QString outcome;  ///< of the last Launch
  /// Another user writes. The program's writing waits until the lock is released, reading goes on.
  /// \param milliseconds  as DatabaseLock::Hold has it
  void LockDatabase(int milliseconds);
  /// Ends all open sessions, as a restarted server does.
  void BreakConnections();
  AnotherProcess another;

 private:
  void MakeGarage(const QVariant& wish);
  /// \param fill  whether the garage was made anew
  void UseSqlServer(bool fill);
  void PutFiles(const StartWishes& wishes) const;
  void PutRegistry(const StartWishes& wishes);
  void PutOptions(const StartWishes& wishes);
  void UseSandbox(const QVariant& credits);

  Bridge& bridge_;
  QString screenshots_;
  StartWishes wishes_;
  EditionNames names_;
  std::unique_ptr<qbx::test::TempFolder> folder_;
  std::unique_ptr<qbx::test::SandboxProcess> sandbox_;
  std::unique_ptr<Session> server_;  ///< beside the program, with QBX_TEST_SERVER
  std::unique_ptr<HostData> data_;
  std::unique_ptr<qbx::test::ServedFolder> served_;
  std::unique_ptr<ScenarioUi> ui_;
  std::unique_ptr<MarketingProgram> program_;
};

/// "2026-03-04", "2026-03-04 10:20" or "2026-03-04 10:20:30". \throws ScenarioError
[[nodiscard]] QDateTime ReadTime(const QString& text);

}  // namespace qbx::scenario
