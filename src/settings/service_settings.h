// The section "Service" of the INI file, which describes the host product and its services.

#pragma once

#include <QString>

#include "platform/ini_file.h"
#include "settings/host_cipher.h"

namespace qbx {

inline constexpr char kServiceSection[] = "Service";

/// The values of the section. It holds passwords in the clear, which must never be logged or shown.
struct ServiceSettings {
  QString keyFile = {};              ///< absolute path
  QString builtInPassword = {};      ///< database login of an installation with the old settings
  QString builtInPassword2 = {};     ///< database login with settings version 2
  QString alternativePassword = {};  ///< tried when the server refuses the login
  QString mailHost = {};             ///< the product family's mail server; empty when there is none
  QString mailAccount = {};          ///< its account
  QString mailPassword = {};         ///< password of that account
  int implicitTlsPort = 465;         ///< mail port where TLS starts with the first byte
  /// PEM file with more authorities for TLS, absolute path; empty for the system's alone.
  QString caFile = {};
  QString supportTelephone = {};        ///< shown with refused test texts
  QString databaseServiceUnit = {};     ///< systemd unit of the service "mssqlserver"
  QString qbxDatabaseServiceUnit = {};  ///< systemd unit of the service "mssql$qbx"
  int connectTimeout = 10;              ///< seconds to reach the SMS gateway or a mail server
  int httpTimeout = 30;                 ///< seconds for the whole answer of the SMS gateway
  int mailReplyTimeout = 60;            ///< seconds for each answer of a mail server
  int mailTimeout = 300;                ///< seconds for one e-mail
};

/// The name by which `HostCipher::Failure` knows the built-in password of the old settings or of version 2.
[[nodiscard]] QString BuiltInPasswordName(bool version2);

/// The path of the key file that the section names, by default "QBX.KEY" in the program folder.
[[nodiscard]] QString ServiceKeyFile(const IniFile& ini, const QString& programFolder);

/// Reads the section. A missing key gives its default, and so does a time-out or port that is no number above 0. A
/// password that cannot be deciphered is empty (and logged). Relative paths are below the program folder.
[[nodiscard]] ServiceSettings ReadServiceSettings(const IniFile& ini, const QString& programFolder, HostCipher& cipher);

}  // namespace qbx
