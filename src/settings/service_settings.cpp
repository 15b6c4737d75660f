#include "settings/service_settings.h"

#include <QDir>
#include <array>

namespace qbx {
namespace {

constexpr char kKeyFile[] = "KeyFile";
constexpr char kBuiltInPassword[] = "BuiltInPassword";
constexpr char kBuiltInPassword2[] = "BuiltInPassword2";
constexpr char kAlternativePassword[] = "AlternativePassword";
constexpr char kMailHost[] = "MailHost";
constexpr char kMailAccount[] = "MailAccount";
constexpr char kMailPassword[] = "MailPassword";
constexpr char kImplicitTlsPort[] = "ImplicitTlsPort";
constexpr char kCaFile[] = "CaFile";
constexpr char kSupportTelephone[] = "SupportTelephone";
constexpr char kDatabaseServiceUnit[] = "DatabaseServiceUnit";
constexpr char kQbxDatabaseServiceUnit[] = "QbxDatabaseServiceUnit";
constexpr char kConnectTimeout[] = "ConnectTimeout";
constexpr char kHttpTimeout[] = "HttpTimeout";
constexpr char kMailReplyTimeout[] = "MailReplyTimeout";
constexpr char kMailTimeout[] = "MailTimeout";

/// One key of the section, as the documentation lists it.
struct ServiceKey {
  const char* name;
  const char* defaultValue;
  bool enciphered;  ///< whether it is stored as `marketingctl encipher` writes it
  const char* description;
};

constexpr auto kServiceKeys = std::to_array<ServiceKey>({
    {kKeyFile, "QBX.KEY", false, "file with the key of all enciphered values"},
    {kBuiltInPassword, "", true, "database password when none is set, with the old settings"},
    {kBuiltInPassword2, "", true, "database password when none is set, with settings version 2"},
    {kAlternativePassword, "", true, "database password tried when the server refuses the login"},
    {kMailHost, "", false, "host name of the product family's own mail server"},
    {kMailAccount, "", false, "account on that mail server, used when the options name no user"},
    {kMailPassword, "", true, "password of that account"},
    {kImplicitTlsPort, "465", false, "mail port on which TLS starts with the first byte"},
    {kCaFile, "", false, "file with certificate authorities trusted beside the system's"},
    {kSupportTelephone, "the support line", false, "telephone number shown when a test text is refused"},
    {kDatabaseServiceUnit, "mssql-server.service", false, "systemd unit of the database service mssqlserver"},
    {kQbxDatabaseServiceUnit, "mssql-server-qbx.service", false, "systemd unit of the database service mssql$qbx"},
    {kConnectTimeout, "10", false, "seconds to reach the SMS gateway or a mail server"},
    {kHttpTimeout, "30", false, "seconds for the whole answer of the SMS gateway"},
    {kMailReplyTimeout, "60", false, "seconds for each answer of a mail server"},
    {kMailTimeout, "300", false, "seconds for one e-mail"},
});

class Section {
 public:
  Section(const IniFile& ini, QString programFolder) : ini_(ini), programFolder_(std::move(programFolder)) {}

  [[nodiscard]] QString Text(const char* name) const {
    return ini_.Read(QString::fromLatin1(kServiceSection), QString::fromLatin1(name), Default(name));
  }
  [[nodiscard]] int Positive(const char* name) const {
    bool ok = false;
    const int value = Text(name).toInt(&ok);
    return ok && value > 0 ? value : Default(name).toInt();
  }
  [[nodiscard]] QString Path(const char* name) const {
    const QString path = Text(name);
    return path.isEmpty() ? path : QDir::cleanPath(QDir(programFolder_).absoluteFilePath(path));
  }

 private:
  [[nodiscard]] static QString Default(const char* name) {
    const auto key = std::ranges::find(kServiceKeys, std::string_view(name),
                                       [](const ServiceKey& entry) { return std::string_view(entry.name); });
    return QString::fromLatin1(key->defaultValue);
  }

  const IniFile& ini_;
  QString programFolder_;
};

QString SecretName(const char* name) {
  return QStringLiteral("value %1 of section Service").arg(QString::fromLatin1(name));
}

}  // namespace

QString BuiltInPasswordName(bool version2) {
  return SecretName(version2 ? kBuiltInPassword2 : kBuiltInPassword);
}

QString ServiceKeyFile(const IniFile& ini, const QString& programFolder) {
  return Section(ini, programFolder).Path(kKeyFile);
}

ServiceSettings ReadServiceSettings(const IniFile& ini, const QString& programFolder, HostCipher& cipher) {
  const Section section(ini, programFolder);
  const auto secret = [&](const char* name) { return cipher.Decipher(section.Text(name), SecretName(name)); };
  return {.keyFile = section.Path(kKeyFile),
          .builtInPassword = secret(kBuiltInPassword),
          .builtInPassword2 = secret(kBuiltInPassword2),
          .alternativePassword = secret(kAlternativePassword),
          .mailHost = section.Text(kMailHost),
          .mailAccount = section.Text(kMailAccount),
          .mailPassword = secret(kMailPassword),
          .implicitTlsPort = section.Positive(kImplicitTlsPort),
          .caFile = section.Path(kCaFile),
          .supportTelephone = section.Text(kSupportTelephone),
          .databaseServiceUnit = section.Text(kDatabaseServiceUnit),
          .qbxDatabaseServiceUnit = section.Text(kQbxDatabaseServiceUnit),
          .connectTimeout = section.Positive(kConnectTimeout),
          .httpTimeout = section.Positive(kHttpTimeout),
          .mailReplyTimeout = section.Positive(kMailReplyTimeout),
          .mailTimeout = section.Positive(kMailTimeout)};
}

}  // namespace qbx
