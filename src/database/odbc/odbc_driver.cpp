#include "database/odbc/odbc_driver.h"

#include <QFile>
#include <QSaveFile>

#include "database/odbc/certificate_check.h"
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
  if (!composed.freeTdsFile.isEmpty()) {
    CheckAuthorities();
    WriteFreeTdsFile(composed.freeTdsFile);
  }
  try {
    return std::make_unique<OdbcSession>(std::make_shared<OdbcLink>(composed.text, loginTimeoutSeconds, roundTrips_));
  } catch (const OdbcFailure& failure) {
    throw FailureToConnect(failure.records, settings_.driver, settings_.encrypt);
  }
}

/// FreeTDS does not tell a file that is missing from a certificate that is not trusted.
void OdbcDriver::CheckAuthorities() const {
  if (settings_.authorities.isEmpty()) return;
  QFile file(settings_.authorities);
  const bool opened = file.open(QIODevice::ReadOnly);
  if (opened && HoldsCertificate(file.readAll())) return;
  Refuse(
      kUnusableSetting,
      QStringLiteral(
          "The file of certificate authorities %1 cannot be used: %2. Nothing was sent to the server. The INI file names it as CaFile in the section Service.")
          .arg(file.fileName(), opened ? QStringLiteral("it holds no certificate (PEM)") : file.errorString()));
}

/// The file changes as a whole: a connection that the user does not wait for any more may still read it.
void OdbcDriver::WriteFreeTdsFile(const QString& text) const {
  QSaveFile file(folder_->filePath(QStringLiteral("freetds.conf")));
  const QByteArray bytes = text.toUtf8();
  if (!folder_->isValid() || !file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
    Refuse(kUnusableSetting,
           QStringLiteral("The settings for an encrypted connection could not be written to %1.").arg(file.fileName()));
}

}  // namespace qbx
