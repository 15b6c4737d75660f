#include "database/odbc/connection_string.h"

namespace qbx {
namespace {

// The name of the only entry of FreeTDS's file. Without the file, the driver takes it for the name of a host. So it
// must be a name that no host can have.
const QLatin1String kEntry("sqlserver.invalid");

/// How a driver reads values in a connection string.
enum class Dialect { kFreeTds, kMicrosoft };

Dialect DialectOf(const QString& driver) {
  const bool microsoft = driver.contains(QLatin1String("for SQL Server"), Qt::CaseInsensitive) ||
                         driver.contains(QLatin1String("msodbcsql"), Qt::CaseInsensitive);
  return microsoft ? Dialect::kMicrosoft : Dialect::kFreeTds;
}

/// \param what  the name of the value; the error never shows the value itself
/// \throws DatabaseError (kUnusableSetting)
[[noreturn]] void RefuseValue(const QString& what) {
  const QString text =
      QStringLiteral("%1 holds characters that cannot be handed to the database driver. Choose another one.").arg(what);
  throw DatabaseError(kUnusableSetting, text, {{0, QString(), text}});
}

/// The value in braces, which take the special meaning from all its characters. FreeTDS reads the value up to the first
/// "};". Microsoft's driver reads it up to the first brace that is not doubled.
QString Braced(QString value, Dialect dialect, const QString& what) {
  if (value.contains(QChar(u'\0'))) RefuseValue(what);
  if (dialect == Dialect::kMicrosoft)
    value.replace(u'}', QLatin1String("}}"));
  else if (value.contains(QLatin1String("};")))
    RefuseValue(what);
  return u'{' + value + u'}';
}

/// The content of FreeTDS's file: the entry that the connection string names. FreeTDS compares the certificate with the
/// host in this entry.
QString FreeTdsFile(const ServerAddress& address, const OdbcSettings& settings) {
  if (settings.authorities.contains(u'\n')) RefuseValue(QStringLiteral("The name of the file of authorities"));
  const QString authorities = settings.authorities.isEmpty() ? QStringLiteral("system") : settings.authorities;
  return QStringLiteral(
             "[%1]\nhost = %2\nport = %3\ntds version = 7.4\nclient charset = UTF-8\nencryption = require\nca file = %4\ncheck certificate hostname = yes\n")
      .arg(kEntry, address.host, QString::number(address.port), authorities);
}

/// The keywords before the database and the login.
QString ServerWords(const ServerAddress& address, const OdbcSettings& settings, Dialect dialect) {
  const QString port = QString::number(address.port);
  if (dialect == Dialect::kMicrosoft)
    // The driver must not reconnect: the program does it itself, and must know that the connection was lost.
    return QStringLiteral("Server=tcp:%1,%2;Encrypt=%3;TrustServerCertificate=no;ConnectRetryCount=0;")
        .arg(address.host, port, settings.encrypt ? QStringLiteral("yes") : QStringLiteral("no"));
  if (settings.encrypt)
    return QStringLiteral("Servername=%1;TDS_Version=7.4;ClientCharset=UTF-8;Encryption=require;").arg(kEntry);
  // With large packets, a large result takes this computer a third less time.
  return QStringLiteral("Server=%1;Port=%2;TDS_Version=7.4;ClientCharset=UTF-8;Encryption=request;PacketSize=32767;")
      .arg(address.host, port);
}

}  // namespace

QString AuthoritiesInUse(const OdbcSettings& settings) {
  return DialectOf(settings.driver) == Dialect::kFreeTds ? settings.authorities : QString();
}

OdbcConnectionString ComposeConnectionString(const ServerAddress& address, const QString& database, const Login& login,
                                             const OdbcSettings& settings) {
  const Dialect dialect = DialectOf(settings.driver);
  if (settings.driver.contains(u'}')) RefuseValue(QStringLiteral("The name of the driver"));
  QString text =
      QLatin1String("Driver={") + settings.driver + QLatin1String("};") + ServerWords(address, settings, dialect);
  const auto add = [&](const char* word, const QString& value, const QString& what) {
    text += QLatin1String(word) + Braced(value, dialect, what) + u';';
  };
  // The interpretation of errors looks for English words. With this language, the server also reads the dates of
  // statements as year, month, day.
  text += QLatin1String("Language=us_english;");
  if (!settings.application.isEmpty()) add("APP=", settings.application, QStringLiteral("The program's name"));
  add("Database=", database, QStringLiteral("The database's name"));
  add("UID=", login.user, QStringLiteral("The user of the database login"));
  // The password comes last: the driver manager reads "}}" as one brace, and a keyword after it would be lost.
  add("PWD=", login.password, QStringLiteral("The password of the database login"));
  OdbcConnectionString composed = {.text = text};
  if (dialect == Dialect::kFreeTds && settings.encrypt) composed.freeTdsFile = FreeTdsFile(address, settings);
  return composed;
}

}  // namespace qbx
