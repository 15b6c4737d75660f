// marketingctl connect: whether the database can be reached, and if not, what is wrong.

#include <array>
#include <memory>

#include "marketingctl/commands.h"
#include "marketingctl/output.h"
#include "startup/connection_test.h"
#include "startup/connection_words.h"

namespace qbx::ctl {

namespace {

struct ProblemCode {
  ConnectionProblem problem;
  const char* code;
};

constexpr std::array kProblemCodes = {
    ProblemCode{ConnectionProblem::kServerName, "server_name"},
    ProblemCode{ConnectionProblem::kNameUnknown, "name_unknown"},
    ProblemCode{ConnectionProblem::kPortClosed, "port_closed"},
    ProblemCode{ConnectionProblem::kNoAnswer, "no_answer"},
    ProblemCode{ConnectionProblem::kNoSqlServer, "no_sql_server"},
    ProblemCode{ConnectionProblem::kDriverMissing, "no_driver"},
    ProblemCode{ConnectionProblem::kSettingRefused, "unusable_setting"},
    ProblemCode{ConnectionProblem::kPasswordUnreadable, "password_unreadable"},
    ProblemCode{ConnectionProblem::kCannotEncrypt, "cannot_encrypt"},
    ProblemCode{ConnectionProblem::kCertificateRefused, "certificate_refused"},
    ProblemCode{ConnectionProblem::kConnectionLost, "connection_lost"},
    ProblemCode{ConnectionProblem::kLoginRefused, "login_refused"},
    ProblemCode{ConnectionProblem::kNoDatabase, "no_database"},
    ProblemCode{ConnectionProblem::kDatabaseOffline, "database_offline"},
    ProblemCode{ConnectionProblem::kHostTablesMissing, "host_tables_missing"},
    ProblemCode{ConnectionProblem::kCompanyMissing, "company_missing"},
    ProblemCode{ConnectionProblem::kOther, "other"},
};

QJsonValue CodeOf(ConnectionProblem problem) {
  for (const ProblemCode& each : kProblemCodes)
    if (each.problem == problem) return QLatin1String(each.code);
  return {};
}

QJsonValue EncryptionText(const std::optional<ServerEncryption>& encryption) {
  if (!encryption) return {};
  switch (*encryption) {
    case ServerEncryption::kNone:
      return QStringLiteral("none");
    case ServerEncryption::kLoginOnly:
      return QStringLiteral("login");
    case ServerEncryption::kAll:
      return QStringLiteral("all");
  }
  return {};
}

/// To two digits that are not zeros in front.
double Rounded(double milliseconds) {
  return QString::number(milliseconds, 'g', 2).toDouble();
}

Reason ReasonOf(ConnectionProblem problem) {
  if (problem == ConnectionProblem::kNoDatabase) return Reason::kNoDatabase;
  return problem == ConnectionProblem::kCompanyMissing ? Reason::kStartFailed : Reason::kDatabaseAway;
}

using Facts = QList<QPair<QString, QJsonValue>>;

/// For people: of a connection that works, only what there is to say.
void PrintFacts(const ConnectionFindings& findings, const Facts& facts) {
  const bool fine = findings.problem == ConnectionProblem::kNone;
  if (fine) PrintLine(QStringLiteral("The connection works."));
  if (const QString warning = EncryptionWarning(findings); fine && !warning.isEmpty()) PrintLine(warning);
  for (const auto& [name, value] : facts) {
    const QString text = value.toVariant().toString();
    if (!fine || !text.isEmpty()) PrintLine(name.leftJustified(20) + text);
  }
}

int Connect(Program& program) {
  const ConnectionFindings findings = TestConnection(program.app);
  const bool fine = findings.problem == ConnectionProblem::kNone;
  const Facts facts = {
      {QStringLiteral("server"), findings.server.isEmpty() ? QStringLiteral("embedded:") : findings.server},
      {QStringLiteral("port"), findings.port},
      {QStringLiteral("driver"), findings.driver},
      {QStringLiteral("login"), findings.login},
      {QStringLiteral("database"), findings.database},
      {QStringLiteral("serverVersion"), findings.serverVersion},
      {QStringLiteral("encryption"), EncryptionText(findings.encryption)},
      {QStringLiteral("alternativePassword"), findings.alternativePassword},
      {QStringLiteral("roundTripMs"), Rounded(findings.roundTripMilliseconds)},
      {QStringLiteral("databaseVersion"), findings.databaseVersion},
      {QStringLiteral("moduleVersion"), findings.moduleVersion},
      {QStringLiteral("problem"), CodeOf(findings.problem)},
  };
  if (!fine) Refuse(ReasonOf(findings.problem), findings.text);
  if (program.json) {
    QJsonObject object = fine ? QJsonObject() : ErrorJson();
    for (const auto& [name, value] : facts)
      object.insert(name, value);
    PrintJson(object);
  } else {
    PrintFacts(findings, facts);
  }
  return fine ? kDone : kRefused;
}

}  // namespace

void AddConnectCommand(Runner& runner) {
  CLI::App& command = *runner.Root().add_subcommand(
      "connect", "Try the connection to the database that is set, and say what is wrong with it");
  auto test = std::make_shared<bool>(false);
  command.add_flag("--test", *test, "Only try; nothing is changed or logged")->required();
  command.footer("Example: marketingctl --folder garage connect --test\nEnds with 1 when it does not work.");
  runner.AddUnloggedCommand(command, [test](Program& program) { return Connect(program); });
}

}  // namespace qbx::ctl
