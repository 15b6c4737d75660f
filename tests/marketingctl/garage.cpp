#include "garage.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QThread>

namespace qbx::test {

namespace {

constexpr int kLongestRun = 100000;  // milliseconds; the computer may be busy with other tests

QProcessEnvironment CleanEnvironment() {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (const QString& name : environment.keys()) {
    if (name.startsWith("QBX_")) environment.remove(name);
  }
  return environment;
}

void StartCtl(QProcess& process, const QStringList& arguments) {
  process.setProcessEnvironment(CleanEnvironment());
  process.start(QStringLiteral(QBX_MARKETINGCTL), arguments);
  if (!process.waitForStarted(kLongestRun)) ADD_FAILURE() << "marketingctl did not start";
}

QStringList AsPat(const QString& folder, const char* line, const QStringList& values) {
  return Words("--folder %1 --user Pat --json", {folder}) + Words(line, values);
}

QByteArray FileBytes(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

QJsonValue At(const QJsonValue& object, const char* name) {
  return object[QLatin1String(name)];
}
int Number(const QJsonValue& object, const char* name) {
  return At(object, name).toInt(-1);
}
QString Text(const QJsonValue& object, const char* name) {
  return At(object, name).toString();
}
bool Flag(const QJsonValue& object, const char* name) {
  return At(object, name).toBool();
}

QStringList Words(const char* line, const QStringList& values) {
  QStringList words = QString::fromUtf8(line).split(QLatin1Char(' '), Qt::SkipEmptyParts);
  for (QString& word : words) {
    if (word.size() == 2 && word[0] == QLatin1Char('%')) word = values.value(word[1].digitValue() - 1);
  }
  return words;
}

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
  const CtlResult made = RunCtl(Words("sample %1 --customers %2", {Path(), QString::number(customers)}));
  EXPECT_EQ(made.code, 0) << made.err.constData();
  served_.Fill();
  served_.TellPrograms();
}

CtlResult Garage::Run(const char* line, const QStringList& values, const QByteArray& input) const {
  return RunCtl(AsPat(Path(), line, values), input);
}

QJsonValue Garage::Done(const char* line, const QStringList& values, const QByteArray& input) const {
  const CtlResult result = Run(line, values, input);
  EXPECT_EQ(result.code, 0) << line << ": " << result.err.constData();
  const QJsonDocument json = result.Json();
  return json.isArray() ? QJsonValue(json.array()) : QJsonValue(json.object());
}

std::unique_ptr<QProcess> Garage::Start(const char* line, const QStringList& values) const {
  auto process = std::make_unique<QProcess>();
  StartCtl(*process, AsPat(Path(), line, values));
  return process;
}

void Garage::Sql(const char* statements) const {
  served_.Connect()->Execute(QString::fromUtf8(statements));
}

void Garage::MakeEverybodyReachable() const {
  Sql("UPDATE Customers SET Mobile = replace('07510%', '%', CAST(Customer + 100000 AS varchar(9))), Email = replace('c%@example.com', '%', CAST(Customer AS varchar(9))), "
      "Consent_Response = 1,"
      " No_Marketing = 0, Can_Send_SMS = 1, Can_Send_Email = 1, Can_Send_Letter = 1");
}

void Garage::Use(const SandboxProcess& sandbox) const {
  Done("options set SMS_Server %1", {sandbox.Gateway()});
  Done("options set SMTP_Server 127.0.0.1");
  Done("options set SMTP_Port %1", {QString::number(sandbox.SmtpPort())});
}

QString Garage::MakeCampaign() const {
  const QJsonValue made = Done("query --query %1 --sms %2 --subject %3 --body %4 --save Everybody",
                               {"All Customers", "Dear {contact}", "For {contact}", "Hello {contact}"});
  QString id = QString::number(Number(made, "campaign"));
  Done("results %1 --send-by sms=0 email=0 letter=1", {id});
  return id;
}

Received Accepted(const SandboxProcess& sandbox, const char* kind) {
  Received received;
  const QByteArray records = sandbox.Ask(QString("/api/") + kind);
  for (const auto& record : QJsonDocument::fromJson(records).array()) {
    if (Text(record, "outcome") != "accepted") continue;
    const QJsonValue to = At(record, "to");
    ++received[to.isArray() ? to[0].toString() : to.toString()];
  }
  return received;
}

int Recorded(const SandboxProcess& sandbox) {
  return static_cast<int>(FileBytes(sandbox.Folder() + "/texts.jsonl").count('\n') +
                          FileBytes(sandbox.Folder() + "/mails.jsonl").count('\n'));
}

void WaitForRecords(const SandboxProcess& sandbox, int records, QProcess& process) {
  while (Recorded(sandbox) < records && !process.waitForFinished(0) && process.state() != QProcess::NotRunning)
    QThread::msleep(1);
}

}  // namespace qbx::test
