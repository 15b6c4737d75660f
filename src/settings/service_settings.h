// Section "Service" of the INI file: what belongs to the host product and its services.

#pragma once

#include <QString>
#include <span>

#include "platform/ini_file.h"
#include "settings/host_cipher.h"

namespace qbx {

inline constexpr char kServiceSection[] = "Service";

/// One key of the section, as documented.
struct ServiceKey {
  const char* name;
  const char* defaultValue;
  bool enciphered;  ///< stored as `marketingctl encipher` makes it
  const char* description;
};

/// Every key of the section.
[[nodiscard]] std::span<const ServiceKey> ServiceKeys();

/// The values of the section. Passwords are in the clear here and must never be logged or shown.
struct ServiceSettings {
  QString keyFile = {};                 ///< absolute path
  QString builtInPassword = {};         ///< database login of an installation with the old settings
  QString builtInPassword2 = {};        ///< database login with settings version 2
  QString alternativePassword = {};     ///< tried when the server refuses the login
  QString mailHost = {};                ///< the product family's mail server; empty: there is none, and no server is it
  QString mailAccount = {};             ///< its account
  QString mailPassword = {};            ///< password of that account
  int implicitTlsPort = 465;            ///< mail port where TLS starts with the first byte
  QString caFile = {};                  ///< extra authorities for TLS, absolute path; empty: the system's alone
  QString supportTelephone = {};        ///< shown with refused test texts
  QString databaseServiceUnit = {};     ///< systemd unit of service "mssqlserver"
  QString qbxDatabaseServiceUnit = {};  ///< systemd unit of service "mssql$qbx"
  int connectTimeout = 10;              ///< seconds to reach the SMS gateway or a mail server
  int httpTimeout = 30;                 ///< seconds for the whole answer of the SMS gateway
  int mailReplyTimeout = 60;            ///< seconds for each answer of a mail server
  int mailTimeout = 300;                ///< seconds for one e-mail
};

/// Path of the key file that the section names; the program folder's "QBX.KEY" when it names none.
[[nodiscard]] QString ServiceKeyFile(const IniFile& ini, const QString& programFolder);

/// Reads the section. A missing key gives its default, a time-out or port that is no number above 0 too, a password
/// that cannot be deciphered is empty (and logged). Relative paths are below the program folder.
[[nodiscard]] ServiceSettings ReadServiceSettings(const IniFile& ini, const QString& programFolder, HostCipher& cipher);

}  // namespace qbx
