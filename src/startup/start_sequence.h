// The order in which the program starts.

#pragma once

#include <QString>
#include <functional>

#include "campaigns/campaign_storage.h"
#include "database/event_log.h"
#include "diagnostics/diagnostics.h"
#include "platform/host_info.h"
#include "settings/registry_values.h"
#include "startup/connect_host.h"

namespace qbx {

enum class StartOutcome {
  kRefused,  ///< no user was named; the user of the computer was told
  kStopped,  ///< the command line held no known switch, or asked for help, or the user agreed to quit
  kRunning,  ///< the windows are open (with or without a database)
};

/// What start-up shows, set by the window program; an empty one does nothing.
struct StartWindows {
  std::function<void()> showSplash = {};
  std::function<void()> openWindows = {};
  std::function<void()> closeSplash = {};
};

/// A start without a command line.
struct HeadlessStart {
  QString user;          ///< cut to 20 characters
  QString databaseName;  ///< the whole name; empty: as the edition and the registry say
  QString instance;      ///< as the switch /instance: takes it
};

/// What start-up works with. References only.
struct StartParts {
  StartupValues& startup;
  EventContext& context;
  IniFile& ini;
  RegistryValues& registry;
  HostConnection& hostConnection;
  EventLog& events;
  CampaignStorage& campaigns;
  const HostInfo& host;
  LogFile& log;
  Diagnostics diagnostics;
};

/// Starts the program once. A database that cannot be reached does not stop it.
class StartSequence {
 public:
  explicit StartSequence(const StartParts& parts) : parts_(parts) {}

  /// \param commandLine  as `JoinCommandLine` makes it
  StartOutcome Run(const QString& commandLine, const StartWindows& windows);
  /// The same without windows, with values instead of switches. The names are kept in the INI file only when the database could be opened.
  StartOutcome RunHeadless(const HeadlessStart& request);
  /// The first part of that: settles the names of edition and database, and connects to nothing. Needs no user.
  StartOutcome SettleHeadless(const HeadlessStart& request);

 private:
  void Prepare();
  void PrepareHeadless(const HeadlessStart& request);
  void SettleHeadlessNames(const HeadlessStart& request);
  void ReadIniFile();
  /// \param mayOverride  the registry may name another database
  void SettleNames(bool mayOverride);
  void Refuse();
  void Stop();
  void Work();
  /// In the INI file, for the next start.
  void RememberNames();

  StartParts parts_;
};

}  // namespace qbx
