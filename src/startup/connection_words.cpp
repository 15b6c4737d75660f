#include "startup/connection_words.h"

#include "util/date_text.h"

namespace qbx {

namespace {

constexpr qsizetype kNamesTold = 5;

}  // namespace

QString WordsFor(ConnectionProblem problem, const ConnectionFindings& findings) {
  const QString place = QStringLiteral("port %1 of %2").arg(findings.port).arg(findings.host);
  switch (problem) {
    case ConnectionProblem::kNameUnknown:
      return QStringLiteral("No computer of the name %1 is known here. Check how it is written, and the network.")
          .arg(findings.host);
    case ConnectionProblem::kPortClosed:
      return QStringLiteral(
                 "Nothing listens at %1. Start SQL Server there, switch on TCP/IP for it, and check the port.")
          .arg(place);
    case ConnectionProblem::kNoAnswer:
      return QStringLiteral(
                 "Nothing came back from %1 in %2 seconds. Is the computer on, and does the firewall let this port through?")
          .arg(place)
          .arg(kLoginLimitSeconds);
    case ConnectionProblem::kNoSqlServer:
      return QStringLiteral("What listens at %1 is no SQL Server. Check the port.").arg(place);
    case ConnectionProblem::kCannotEncrypt:
      return QStringLiteral(
          "The server offers no encryption, and the registry value Login\\Encrypt wants it. Nothing was sent to it. Give the server a certificate, or set the value to N.");
    case ConnectionProblem::kConnectionLost:
      return QStringLiteral(
          "The server ended the connection during the log-in or just after it. Try again. If it happens again, look into the server's log; a server that only knows encryption older than TLS 1.2 may do the same.");
    case ConnectionProblem::kNoDatabase:
      if (findings.server.isEmpty())
        return QStringLiteral(
                   "No SQL Server is set (value Server of the registry key Login), so a database in the program folder is used, and there is no database \"%1\" in it.")
            .arg(findings.database);
      return QStringLiteral("The server has no database \"%1\", or the login may not see it.").arg(findings.database);
    case ConnectionProblem::kDatabaseOffline:
      return QStringLiteral("The database \"%1\" is there, but not online.").arg(findings.database);
    case ConnectionProblem::kHostTablesMissing:
      return QStringLiteral(
                 "The database \"%1\" can be opened, but does not have the tables and procedures of the host product.")
          .arg(findings.database);
    default:
      return {};
  }
}

QString SilenceWords(ServerPresence presence, const ConnectionFindings& findings) {
  const QString what = presence == ServerPresence::kSilent
                           ? QStringLiteral("nothing came back in %1 seconds").arg(kLoginLimitSeconds)
                       : presence == ServerPresence::kHungUp ? QStringLiteral("it was ended at once")
                                                             : QString();
  if (what.isEmpty()) return {};
  return QStringLiteral(
             "Port %1 of %2 took the connection, but %3. If that is the right port, SQL Server hangs there, is starting or is ending; otherwise check the port.")
      .arg(findings.port)
      .arg(findings.host, what);
}

QString LossWords(const DatabaseError& error, const ConnectionFindings& findings) {
  QStringList said;
  for (const ProviderError& each : error.Errors())
    said << each.description;
  return WordsFor(ConnectionProblem::kConnectionLost, findings) +
         QStringLiteral(" The driver says: %1").arg(said.join(QStringLiteral("; ")));
}

namespace {

/// \param authorities  the file of authorities in use; empty: the system's
QString AuthorityWords(const QString& reason, const QString& authorities) {
  if (authorities.isEmpty())
    return QStringLiteral(
               "The server's certificate is not trusted: no authority that this computer knows has signed it (%1). Name the file of the authority as CaFile in the section Service of the INI file.")
        .arg(reason);
  return QStringLiteral(
             "The server's certificate is not trusted: no authority in the file %1 has signed it (%2). CaFile in the section Service of the INI file names that file. Name the file of the authority that did sign it.")
      .arg(authorities, reason);
}

}  // namespace

QString CertificateWords(const CertificateFindings& certificate, const QString& authorities,
                         const ConnectionFindings& findings) {
  const QString nothing = QStringLiteral(" No login was sent to it.");
  QString ended = WordsFor(ConnectionProblem::kConnectionLost, findings);
  switch (certificate.fault) {
    case CertificateFault::kNone:
      return ended +
             QStringLiteral(" The server's certificate is trusted here, though the driver may see it otherwise.");
    case CertificateFault::kNotShown:
      return ended;
    case CertificateFault::kUnknownAuthority:
      return AuthorityWords(certificate.reason, authorities) + nothing;
    case CertificateFault::kOtherName:
      return QStringLiteral(
                 "The server's certificate was issued for %1, not for %2. Write a name of the certificate into Server.")
                 .arg(certificate.names.mid(0, kNamesTold).join(QStringLiteral(", ")), findings.host) +
             nothing;
    case CertificateFault::kOutOfDate:
      return QStringLiteral(
                 "The server's certificate holds from %1 to %2 only. Give the server a new one, or look at this computer's clock.")
                 .arg(DayText(certificate.from), DayText(certificate.until)) +
             nothing;
    default:
      return QStringLiteral("The server's certificate is not trusted: %1.").arg(certificate.reason) + nothing;
  }
}

QString EncryptionWarning(const ConnectionFindings& findings) {
  if (findings.encryption != ServerEncryption::kNone) return {};
  return QStringLiteral(
             "The password of \"%1\" went over the network unencrypted, since the server offers no encryption. Give the server a certificate, then set the registry value Login\\Encrypt to Y.")
      .arg(findings.login);
}

}  // namespace qbx
