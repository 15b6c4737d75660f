#include "database/odbc/odbc_driver.h"

#include <QFile>

#include "database/odbc/odbc_session.h"

namespace qbx {
namespace {

constexpr char kFileVariable[] = "FREETDSCONF";

[[noreturn]] void Refuse(int number, const QString& text) {
  throw DatabaseError(number, text, {{0, QString(), text}});
}

}  // namespace

OdbcDriver::~OdbcDriver() {
  if (folder_) qunsetenv(kFileVariable);
}

void OdbcDriver::SetUp(const OdbcSettings& settings) {
  settings_ = settings;
  if (!settings.encrypt || folder_) return;
  folder_ = std::make_unique<QTemporaryDir>();
  qputenv(kFileVariable, QFile::encodeName(folder_->filePath(QStringLiteral("freetds.conf"))));
}

SessionFactory OdbcDriver::Factory() {
  return [this](const ConnectionTarget& target, const Login& login, int timeout) {
    return Connect(target, login, timeout);
  };
}

std::unique_ptr<Session> OdbcDriver::Connect(const ConnectionTarget& target, const Login& login,
                                             int loginTimeoutSeconds) {
  if (!settings_.refusal.isEmpty()) Refuse(kUnusableSetting, settings_.refusal);
  const ServerAddress address = LocateServer(target.server);
  const OdbcConnectionString composed = ComposeConnectionString(address, target.database, login, settings_);
  if (!composed.freeTdsFile.isEmpty()) WriteFreeTdsFile(composed.freeTdsFile);
  try {
    return std::make_unique<OdbcSession>(std::make_shared<OdbcLink>(composed.text, loginTimeoutSeconds, roundTrips_));
  } catch (const OdbcFailure& failure) {
    throw FailureToConnect(failure.records, settings_.driver, settings_.encrypt);
  }
}

void OdbcDriver::WriteFreeTdsFile(const QString& text) const {
  QFile file(folder_->filePath(QStringLiteral("freetds.conf")));
  const QByteArray bytes = text.toUtf8();
  if (!folder_->isValid() || !file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
      file.write(bytes) != bytes.size())
    Refuse(kUnusableSetting,
           QStringLiteral("The settings for an encrypted connection could not be written to %1.").arg(file.fileName()));
}

}  // namespace qbx
