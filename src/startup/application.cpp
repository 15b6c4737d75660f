#include "startup/application.h"

#include "dispatch/replace_guard.h"
#include "hostdb/database_upgrade.h"
#include "network/curl_http_client.h"
#include "network/curl_mail_transport.h"
#include "platform/cups_printers.h"
#include "platform/file_names.h"
#include "platform/system_host_info.h"
#include "platform/system_shell.h"
#include "platform/systemd_services.h"
#include "registry/file_registry_store.h"
#include "util/text.h"

namespace qbx {
namespace {

/// Returns the stand-in, or makes the real object and keeps it in `own`.
template <typename Interface, typename Make>
Interface& Choose(Interface* standIn, std::unique_ptr<std::remove_const_t<Interface>>& own, const Make& make) {
  if (standIn != nullptr) return *standIn;
  own = make();
  return *own;
}

StartupValues ValuesFor(const QString& programFolder) {
  StartupValues values;
  values.ProgramFolder = programFolder;
  return values;
}

/// The systemd unit of a database service.
QString UnitFor(const ServiceSettings& service, const QString& name) {
  if (EqualsNoCase(name, QStringLiteral("mssql$qbx"))) return service.qbxDatabaseServiceUnit;
  if (EqualsNoCase(name, QStringLiteral("mssqlserver"))) return service.databaseServiceUnit;
  return {};
}

/// Sessions of the embedded engine where the server's name says so, else of a SQL Server.
SessionFactory Sessions(EmbeddedEngine& engine, OdbcDriver& sqlServer) {
  return [&](const ConnectionTarget& target, const Login& login, int timeout) {
    return IsEmbeddedServer(target.server) ? engine.Connect(target, login, timeout)
                                           : sqlServer.Connect(target, login, timeout);
  };
}

}  // namespace

Application::Application(const ApplicationSetup& setup)
    : startup(ValuesFor(setup.folders.program)),
      ui(setup.ui),
      clock(setup.clock),
      log(clock, startup.ProgramFolder + QStringLiteral("MARKETING.LOG"), setup.writesLog),
      status(ui),
      errors(log, status, ui),
      diagnostics{clock, log, ui, status, errors},
      ini(PathNoCase(startup.ProgramFolder, QStringLiteral("QBX.INI"))),
      cipher(ServiceKeyFile(ini, startup.ProgramFolder), log),
      service(ReadServiceSettings(ini, startup.ProgramFolder, cipher)),
      host(Choose(setup.host, ownHost_, [] { return std::make_unique<SystemHostInfo>(); })),
      registryStore(Choose(setup.registry, ownRegistry_,
                           [&] { return std::make_unique<FileRegistryStore>(setup.folders.registry); })),
      services(Choose(setup.services, ownServices_,
                      [this] {
                        return std::make_unique<SystemdServices>(
                            [this](const QString& name) { return UnitFor(service, name); });
                      }),
               log),
      shell(Choose(setup.shell, ownShell_, [] { return std::make_unique<SystemShell>(); })),
      http(Choose(setup.http, ownHttp_,
                  [this] {
                    const auto pump = [this] {
                      ui.PumpEvents();
                      return true;
                    };
                    return std::make_unique<CurlHttpClient>(
                        pump, HttpLimits{.connectSeconds = service.connectTimeout, .totalSeconds = service.httpTimeout},
                        service.caFile);
                  })),
      mail(Choose(setup.mail, ownMail_,
                  [this] {
                    const MailLimits limits = {.connectSeconds = service.connectTimeout,
                                               .replySeconds = service.mailReplyTimeout,
                                               .totalSeconds = service.mailTimeout};
                    return std::make_unique<CurlMailTransport>(service.caFile, limits, [this] { ui.PumpEvents(); });
                  })),
      printers(Choose(setup.printers, ownPrinters_, [] { return std::make_unique<CupsPrinters>(); })),
      registry({registryStore, diagnostics, registryFailures}, startup),
      engine(
          startup.ProgramFolder, clock,
          [this](const QString& file) {
            if (!KeepUpToDate(file)) return;
            log.WriteLog(
                QStringLiteral(
                    "The database %1 was brought up to date. The file beside it whose name ends in \".before-%2.db\" is as it was before.")
                    .arg(file)
                    .arg(NewestFileNumber()));
          }),
      connection(setup.wrapSessions ? setup.wrapSessions(Sessions(engine, sqlServer)) : Sessions(engine, sqlServer)),
      events(connection, eventContext, log),
      interpretation(eventContext, events, lastError, diagnostics),
      statements(connection, interpretation, events, lastError, diagnostics),
      optionsLoader(statements, ini, cipher, startup, eventContext, options, diagnostics),
      campaignStorage(statements, events, eventContext, diagnostics, campaign,
                      [this](int id) { return ReplaceGuard(connection, host, diagnostics).LookAtClaim(id); }),
      hostConnection({startup, ini, registry, service, cipher, host, sqlServer, connection, statements, services, shell,
                      optionsLoader, userOptions, diagnostics}),
      start({startup, eventContext, ini, registry, hostConnection, events, campaignStorage, host, log, diagnostics}) {
  errors.SetEventWriter([this](int type, int table, const QString& key, const QString& details) {
    events.LogEvent(type, table, key, details);
  });
}

}  // namespace qbx
