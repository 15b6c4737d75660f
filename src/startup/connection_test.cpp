#include "startup/connection_test.h"

#include <QElapsedTimer>
#include <algorithm>
#include <array>

#include "database/odbc/certificate_check.h"
#include "database/odbc/native_errors.h"
#include "database/recordset.h"
#include "startup/connection_words.h"
#include "util/text.h"

namespace qbx {
namespace {

constexpr auto kProbeLimit = std::chrono::seconds(kLoginLimitSeconds);
constexpr int kTimeLimitSeconds = 20;
constexpr int kTimedAnswers = 5;

enum ServerNumber {
  kDatabaseUnknown = 911,
  kOffline = 942,
  kMissingObject = 208,
  kMissingProcedure = 2812,
  kCannotOpenDatabase = 4060
};

bool Says(const DatabaseError& error, int number) {
  return std::ranges::any_of(error.Errors(), [number](const ProviderError& each) { return each.number == number; });
}

bool SaysNoConnection(const ProviderError& error) {
  return error.sqlState.startsWith(QLatin1String("08"));
}

ConnectionProblem ProblemOf(ServerPresence presence) {
  switch (presence) {
    case ServerPresence::kNameUnknown:
      return ConnectionProblem::kNameUnknown;
    case ServerPresence::kPortClosed:
      return ConnectionProblem::kPortClosed;
    case ServerPresence::kNoAnswer:
    case ServerPresence::kSilent:
      return ConnectionProblem::kNoAnswer;
    case ServerPresence::kHungUp:
      return ConnectionProblem::kConnectionLost;
    case ServerPresence::kStranger:
      return ConnectionProblem::kNoSqlServer;
    case ServerPresence::kThere:
      return ConnectionProblem::kNone;
  }
  return ConnectionProblem::kOther;
}

class Test {
 public:
  explicit Test(Application& app)
      : app_(app),
        login_(ReadLoginSettings(app.registry, app.ini, app.startup.ProgramFolder, app.service, app.cipher)) {}

  ConnectionFindings Run() {
    const ConnectSettings naming{.settingsVersion2 = login_.settingsVersion2,
                                 .overrideAutomaticSettings = login_.overrideAutomaticSettings};
    findings_.server = ServerName(login_.server, naming);
    findings_.database = app_.startup.databaseName;
    embedded_ = IsEmbeddedServer(findings_.server);
    if (embedded_)
      findings_.server.clear();
    else
      findings_.login = login_.login.user;
    try {
      if (const std::optional<DatabaseError> refusal = NameProblem({}, findings_.database)) throw *refusal;
      if (embedded_ || (PasswordIsKnown() && ServerAnswers())) UseDatabase(Open(findings_.database));
    } catch (const DatabaseError& error) {
      Explain(error);
    }
    return findings_;
  }

 private:
  void Tell(ConnectionProblem problem, const QString& text = {}) {
    findings_.problem = problem;
    findings_.text = text.isEmpty() ? WordsFor(problem, findings_) : text;
  }

  bool PasswordIsKnown() {
    if (login_.passwordFailure.isEmpty()) return true;
    Tell(ConnectionProblem::kPasswordUnreadable,
         login_.passwordFailure + QStringLiteral(" Nothing was sent to the server."));
    return false;
  }

  /// Before anything is sent that only the right server should see.
  bool ServerAnswers() {
    app_.sqlServer.SetUp(login_.sqlServer);
    findings_.driver = login_.sqlServer.driver;
    if (const QString& refusal = login_.sqlServer.refusal; !refusal.isEmpty()) {
      Tell(ConnectionProblem::kSettingRefused, refusal);
      return false;
    }
    try {
      const ServerAddress address = LocateServer(findings_.server);
      findings_.host = address.host;
      findings_.port = address.port;
      const ServerProbe probe = ProbeServer(address, kProbeLimit);
      findings_.serverVersion = probe.version;
      if (probe.presence == ServerPresence::kThere)
        findings_.encryption = login_.sqlServer.encrypt ? ServerEncryption::kAll : probe.encryption;
      if (const ConnectionProblem problem = ProblemOf(probe.presence); problem != ConnectionProblem::kNone)
        Tell(problem, SilenceWords(probe.presence, findings_));
      else if (login_.sqlServer.encrypt && probe.encryption == ServerEncryption::kNone)
        Tell(ConnectionProblem::kCannotEncrypt);
    } catch (const DatabaseError& error) {
      Tell(error.ConnectionLost() ? ConnectionProblem::kNameUnknown : ConnectionProblem::kServerName,
           error.Description());
    }
    if (findings_.problem != ConnectionProblem::kNone) findings_.encryption.reset();
    return findings_.problem == ConnectionProblem::kNone;
  }

  std::unique_ptr<Session> OpenWith(const QString& database, const Login& login) {
    const ConnectionTarget target{findings_.server, database};
    std::unique_ptr<Session> session = embedded_ ? app_.engine.Connect(target, login, kLoginLimitSeconds)
                                                 : app_.sqlServer.Connect(target, login, kLoginLimitSeconds);
    opened_ = true;
    session->SetCommandTimeout(kTimeLimitSeconds);
    return session;
  }

  /// As a start does it: where the stored password is refused, the alternative one is tried.
  std::unique_ptr<Session> Open(const QString& database) {
    try {
      return OpenWith(database, login_.login);
    } catch (const DatabaseError& error) {
      if (!error.Description().contains(QLatin1String("login failed for user"), Qt::CaseInsensitive)) throw;
      std::unique_ptr<Session> session = OpenWith(database, {login_.login.user, app_.service.alternativePassword});
      findings_.alternativePassword = true;
      return session;
    }
  }

  void UseDatabase(std::unique_ptr<Session> session) {
    std::array<qint64, kTimedAnswers> times = {};
    for (qint64& time : times) {
      QElapsedTimer timer;
      timer.start();
      (void)Recordset::ReadAll(session->Execute(QStringLiteral("SELECT 1 AS Answer")));
      time = timer.nsecsElapsed();
    }
    std::ranges::sort(times);
    findings_.roundTripMilliseconds = static_cast<double>(times[kTimedAnswers / 2]) / 1e6;
    const Recordset versions = Recordset::ReadAll(session->Execute(QStringLiteral("proc__OptionVersion")));
    if (versions.Eof()) return Tell(ConnectionProblem::kHostTablesMissing);
    findings_.databaseVersion = static_cast<int>(versions.Field(QStringLiteral("Version")).ToInt());
    findings_.moduleVersion = static_cast<int>(versions.Field(QStringLiteral("Marketing_Version")).ToInt());
    CheckCompany(*session);
  }

  /// A start reads the options of company "A", and those of its own company.
  void CheckCompany(Session& session) {
    for (const QString& company : {QStringLiteral("A"), login_.companyCode}) {
      const std::unique_ptr<RowSource> row = session.Execute(OptionsCall(company));
      if (row && row->Next()) continue;
      return Tell(
          ConnectionProblem::kCompanyMissing,
          QStringLiteral(
              "The database \"%1\" can be opened, but its table _Options has no row of the company \"%2\". It needs one of company \"A\", and one of the company that the registry value Login\\Company names.")
              .arg(findings_.database, company));
    }
  }

  void Explain(const DatabaseError& error) {
    if (error.Number() == kNoDriver) return Tell(ConnectionProblem::kDriverMissing, error.Description());
    if (error.Number() == kUnusableSetting) return Tell(ConnectionProblem::kSettingRefused, error.Description());
    if (Says(error, kMissingProcedure) || Says(error, kMissingObject))
      return Tell(ConnectionProblem::kHostTablesMissing);
    if (Says(error, kOffline)) return Tell(ConnectionProblem::kDatabaseOffline);
    if (Says(error, kCannotOpenDatabase) || Says(error, kDatabaseUnknown)) return LookFromMaster(error);
    if (error.Number() == kAuthenticationFailed)
      return Tell(
          ConnectionProblem::kLoginRefused,
          QStringLiteral(
              "The server refused the login \"%1\": %2 Check SQLLoginUser and SQLLoginPassword in the registry key Login.")
              .arg(login_.login.user, error.Description()));
    if (error.Description().startsWith(QLatin1String("Timeout expired")))
      return Tell(
          ConnectionProblem::kNoAnswer,
          QStringLiteral(
              "SQL Server is there, but it did not answer %1 in %2 seconds. It may be starting, or overloaded. Try again; if it stays so, look into the server's log.")
              .arg(opened_ ? QStringLiteral("a statement") : QStringLiteral("the log-in"))
              .arg(opened_ ? kTimeLimitSeconds : kLoginLimitSeconds));
    if (error.ConnectionLost() && !embedded_) return ExplainLoss(error);
    Tell(ConnectionProblem::kOther, error.Description());
  }

  /// Encryption is no matter of a connection that stood.
  void ExplainLoss(const DatabaseError& error) {
    const NoConnection why = WhyNoConnection(error.Errors(), login_.sqlServer.encrypt);
    if (opened_ || why == NoConnection::kEnded) return Tell(ConnectionProblem::kConnectionLost);
    if (why == NoConnection::kNotEncrypted) return ExplainCertificate();
    // The server was there a moment ago, so a driver that finds none lost the connection.
    if (std::ranges::any_of(error.Errors(), SaysNoConnection))
      return Tell(ConnectionProblem::kConnectionLost, LossWords(error, findings_));
    Tell(ConnectionProblem::kOther, error.Description());
  }

  /// The driver says the same of a certificate that is not trusted and of a connection that broke meanwhile.
  void ExplainCertificate() {
    const ServerAddress found{.host = findings_.host, .instance = {}, .port = findings_.port};
    const QString authorities = AuthoritiesInUse(login_.sqlServer);
    const CertificateFindings certificate = CheckCertificate(found, authorities, kProbeLimit);
    const bool refused =
        certificate.fault != CertificateFault::kNone && certificate.fault != CertificateFault::kNotShown;
    Tell(refused ? ConnectionProblem::kCertificateRefused : ConnectionProblem::kConnectionLost,
         CertificateWords(certificate, authorities, findings_));
  }

  /// A server says the same of a database that is not there and of one that is offline.
  void LookFromMaster(const DatabaseError& error) {
    try {
      const std::unique_ptr<Session> master = Open(QStringLiteral("master"));
      const Recordset read = Recordset::ReadAll(master->Execute(
          QLatin1String("SELECT DATABASEPROPERTYEX(") + SqlQuoted(findings_.database) + QLatin1String(", 'Status')")));
      const QString status = read.Field(0).ToText();
      if (status.isEmpty()) return Tell(ConnectionProblem::kNoDatabase);
      if (!EqualsNoCase(status, QStringLiteral("ONLINE"))) return Tell(ConnectionProblem::kDatabaseOffline);
      Tell(ConnectionProblem::kLoginRefused,
           QStringLiteral(
               "The database \"%1\" is online, but the login \"%2\" may not open it. Give it a user there: %3")
               .arg(findings_.database, login_.login.user, error.Description()));
    } catch (const DatabaseError&) {
      Tell(ConnectionProblem::kNoDatabase, error.Description());
    }
  }

  Application& app_;
  LoginSettings login_;
  ConnectionFindings findings_;
  bool embedded_ = false;
  bool opened_ = false;  ///< the server took the login
};

}  // namespace

ConnectionFindings TestConnection(Application& app) {
  return Test(app).Run();
}

}  // namespace qbx
