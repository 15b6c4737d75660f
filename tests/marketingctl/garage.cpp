#include "garage.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QThread>

#include "hostdb/sqlite_file.h"

namespace qbx::test {

namespace {

constexpr int kLongestRun = 100000;  // milliseconds; the computer may be busy with other tests

QProcessEnvironment CleanEnvironment() {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (const QString& name : environment.keys()) {
    if (name.startsWith(QStringLiteral("QBX_"))) environment.remove(name);
  }
  return environment;
}

void StartCtl(QProcess& process, const QStringList& arguments) {
  process.setProcessEnvironment(CleanEnvironment());
  process.start(QStringLiteral(QBX_MARKETINGCTL), arguments);
  if (!process.waitForStarted(kLongestRun)) ADD_FAILURE() << "marketingctl did not start";
}

QStringList AsPat(const QString& folder, const QStringList& command) {
  return QStringList{QStringLiteral("--folder"), folder, QStringLiteral("--user"), QStringLiteral("Pat"),
                     QStringLiteral("--json")} +
         command;
}

QByteArray FileBytes(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QJsonArray Accepted(const SandboxProcess& sandbox, const char* path) {
  QJsonArray accepted;
  for (const QJsonValue& record : QJsonDocument::fromJson(sandbox.Ask(QLatin1String(path))).array()) {
    if (record[QLatin1String("outcome")] == QLatin1String("accepted")) accepted.append(record);
  }
  return accepted;
}

}  // namespace

QJsonDocument CtlResult::Json() const {
  QJsonParseError error{};
  QJsonDocument document = QJsonDocument::fromJson(out, &error);
  EXPECT_EQ(error.error, QJsonParseError::NoError)
      << "stdout is not JSON alone: " << out.constData() << "\nstderr: " << err.constData();
  return document;
}

CtlResult RunCtl(const QStringList& arguments, const QByteArray& input) {
  QProcess process;
  StartCtl(process, arguments);
  process.write(input);
  process.closeWriteChannel();
  return Finish(process);
}

CtlResult Finish(QProcess& process) {
  if (process.state() != QProcess::NotRunning && !process.waitForFinished(kLongestRun)) {
    ADD_FAILURE() << "marketingctl hangs";
    process.kill();
    process.waitForFinished();
  }
  return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1, process.readAllStandardOutput(),
          process.readAllStandardError()};
}

Garage::Garage(int customers) {
  const CtlResult made =
      RunCtl({QStringLiteral("sample"), Path(), QStringLiteral("--customers"), QString::number(customers)});
  EXPECT_EQ(made.code, 0) << made.err.constData();
}

CtlResult Garage::Run(const QStringList& command, const QByteArray& input) const {
  return RunCtl(AsPat(Path(), command), input);
}

CtlResult Garage::Done(const QStringList& command, const QByteArray& input) const {
  CtlResult result = Run(command, input);
  EXPECT_EQ(result.code, 0) << command.join(QLatin1Char(' ')).toStdString() << ": " << result.err.constData();
  return result;
}

std::unique_ptr<QProcess> Garage::Start(const QStringList& command) const {
  auto process = std::make_unique<QProcess>();
  StartCtl(*process, AsPat(Path(), command));
  return process;
}

void Garage::Sql(const char* statements) const {
  const SqliteFile file(DatabaseFile());
  ExecuteSql(file.Handle(), statements);
}

void Garage::MakeEverybodyReachable() const {
  Sql("UPDATE Customers SET Mobile = printf('0751%07d', Customer), Email = 'c' || Customer || '@example.com', "
      "Consent_Response = 1,"
      " No_Marketing = 0, Can_Send_SMS = 1, Can_Send_Email = 1, Can_Send_Letter = 1");
}

void Garage::Use(const SandboxProcess& sandbox) const {
  Done({QStringLiteral("options"), QStringLiteral("set"), QStringLiteral("SMS_Server"), sandbox.Gateway()});
  Done({QStringLiteral("options"), QStringLiteral("set"), QStringLiteral("SMTP_Server"), QStringLiteral("127.0.0.1")});
  Done({QStringLiteral("options"), QStringLiteral("set"), QStringLiteral("SMTP_Port"),
        QString::number(sandbox.SmtpPort())});
}

QString Garage::MakeCampaign() const {
  const QJsonObject made =
      Done({QStringLiteral("query"), QStringLiteral("--query"), QStringLiteral("All Customers"),
            QStringLiteral("--sms"), QStringLiteral("Dear {contact}"), QStringLiteral("--subject"),
            QStringLiteral("For {contact}"), QStringLiteral("--body"), QStringLiteral("Hello {contact}"),
            QStringLiteral("--save"), QStringLiteral("Everybody")})
          .Object();
  const QString id = QString::number(made[QLatin1String("campaign")].toInt());
  Done({QStringLiteral("results"), id, QStringLiteral("--send-by"), QStringLiteral("sms=0"), QStringLiteral("email=0"),
        QStringLiteral("letter=1")});
  return id;
}

Received AcceptedTexts(const SandboxProcess& sandbox) {
  Received received;
  for (const QJsonValue& text : Accepted(sandbox, "/api/texts"))
    ++received[text[QLatin1String("to")].toString()];
  return received;
}

Received AcceptedMails(const SandboxProcess& sandbox) {
  Received received;
  for (const QJsonValue& mail : Accepted(sandbox, "/api/mails"))
    ++received[mail[QLatin1String("to")][0].toString()];
  return received;
}

int Recorded(const SandboxProcess& sandbox) {
  return static_cast<int>(FileBytes(sandbox.Folder() + QStringLiteral("/texts.jsonl")).count('\n') +
                          FileBytes(sandbox.Folder() + QStringLiteral("/mails.jsonl")).count('\n'));
}

void WaitForRecords(const SandboxProcess& sandbox, int records, QProcess& process) {
  while (Recorded(sandbox) < records && !process.waitForFinished(0) && process.state() != QProcess::NotRunning)
    QThread::msleep(1);
}

}  // namespace qbx::test
