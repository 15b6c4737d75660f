// A whole Application on a program folder of the test, with the user, the computer and its services played.

#pragma once

#include <gtest/gtest.h>

#include "hostdb/host_database.h"
#include "startup/application.h"
#include "support/fakes.h"
#include "support/fixed_clock.h"
#include "support/memory_registry_store.h"
#include "support/scripted_ui.h"
#include "support/temp_folder.h"

namespace qbx::test {

struct StartedApplication {
  TempFolder folder;
  FixedClock clock;
  ScriptedUi ui;
  MemoryRegistryStore registry;
  FakeHostInfo host;
  FakeServices services;
  FakeShell shell;
  QStringList steps;  ///< of the windows
  StartWindows windows{.showSplash = [this] { steps += "splash"; },
                       .openWindows = [this] { steps += "open"; },
                       .closeSplash = [this] { steps += "close"; }};
  std::unique_ptr<Application> application;

  /// Makes an empty host database in the program folder.
  void MakeDatabase(const QString& name) const {
    const auto problem = CreateHostDatabase(folder.File(name + ".db"), ExistingFile::kRefuse);
    if (problem) ADD_FAILURE() << problem->toStdString();
  }
  void PutMachine(const QString& subKey, const QString& name, const QString& text) {
    registry.Put(RegistryHive::kLocalMachine, QString("SOFTWARE\\Korvel Manager") + subKey, name, text);
  }
  Application& Make() {
    application = std::make_unique<Application>(
        ApplicationSetup{.ui = ui,
                         .clock = clock,
                         .folders = {folder.Path() + QLatin1Char('/'), folder.File("registry")},
                         .host = &host,
                         .registry = &registry,
                         .services = &services,
                         .shell = &shell});
    return *application;
  }
  StartOutcome Launch(const QString& commandLine) { return Make().start.Run(commandLine, windows); }
  [[nodiscard]] QString Log() const { return QString::fromUtf8(folder.Read("MARKETING.LOG")); }

  /// First field of the first row, read beside the statement routines.
  [[nodiscard]] QString Ask(const QString& sql) const {
    const Recordset rows = Recordset::ReadAll(application->connection.Driver().Execute(sql));
    return rows.Eof() ? "(no row)" : rows.Field(0).ToText();
  }
};

}  // namespace qbx::test
