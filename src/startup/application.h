// The object that owns the process-wide state and wires the modules together.

#pragma once

#include <functional>
#include <memory>

#include "campaigns/campaign_record.h"
#include "campaigns/campaign_storage.h"
#include "database/embedded/engine.h"
#include "database/odbc/odbc_driver.h"
#include "database/statements.h"
#include "dispatch/dispatch_state.h"
#include "network/http_client.h"
#include "network/mail_transport.h"
#include "platform/printers.h"
#include "settings/options_loader.h"
#include "settings/registry_values.h"
#include "settings/service_settings.h"
#include "settings/user_options.h"
#include "startup/connect_host.h"
#include "startup/folders.h"
#include "startup/start_sequence.h"

namespace qbx {

/// What differs between the window program, the headless runner and the tests. Everything pointed to must outlive the
/// Application.
struct ApplicationSetup {
  UserInterface& ui;
  const Clock& clock;
  Folders folders;
  bool writesLog = true;  ///< false: the log file stays as it is
  // Stand-ins for tests; for a null pointer the real object is made.
  const HostInfo* host = nullptr;
  RegistryStore* registry = nullptr;
  ServiceManager* services = nullptr;
  Shell* shell = nullptr;
  HttpClient* http = nullptr;
  MailTransport* mail = nullptr;
  Printers* printers = nullptr;
  /// Wraps the sessions that the connection opens, as when a server is slow to answer; empty for no wrapper.
  std::function<SessionFactory(SessionFactory)> wrapSessions = {};
};

/// The wiring of one run, in the order of dependence. It has no behaviour of its own. Its members are the interface;
/// each class is given the members that it uses.
///
///   SystemClock clock;
///   Application app({.ui = ui, .clock = clock, .folders = FindFolders()});
///   if (app.start.Run(JoinCommandLine(arguments), windows) == StartOutcome::kRunning) ...
///
/// The database is opened by `start`, not by the constructor.
class Application {
 public:
  explicit Application(const ApplicationSetup& setup);
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  // Values.
  StartupValues startup;
  Options options;
  UserOptions userOptions;
  EventContext eventContext;
  LastError lastError;
  CurrentCampaign campaign;
  DispatchState dispatch;

  // Shared services.
  UserInterface& ui;
  const Clock& clock;
  LogFile log;
  StatusBox status;
  ErrorReport errors;
  Diagnostics diagnostics;

  // Settings from outside.
  IniFile ini;
  HostCipher cipher;
  const ServiceSettings service;

 private:
  std::unique_ptr<HostInfo> ownHost_;
  std::unique_ptr<RegistryStore> ownRegistry_;
  std::unique_ptr<ServiceManager> ownServices_;
  std::unique_ptr<Shell> ownShell_;
  std::unique_ptr<HttpClient> ownHttp_;
  std::unique_ptr<MailTransport> ownMail_;
  std::unique_ptr<Printers> ownPrinters_;

 public:
  // The world outside.
  const HostInfo& host;
  RegistryStore& registryStore;
  ServiceControl services;
  Shell& shell;
  HttpClient& http;
  MailTransport& mail;
  Printers& printers;

  // Registry.
  RegistryFailures registryFailures;
  RegistryValues registry;

  // Database.
  EmbeddedEngine engine;
  OdbcDriver sqlServer;
  Connection connection;
  EventLog events;
  ErrorInterpretation interpretation;
  Statements statements;
  OptionsLoader optionsLoader;
  CampaignStorage campaignStorage;
  HostConnection hostConnection;

  StartSequence start;
};

}  // namespace qbx
