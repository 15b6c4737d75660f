// The messages before the first request: the pre-login and the login.

#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

namespace qbx::tds {

/// The agreement on encryption, by its number on the wire.
enum class Encryption : quint8 { kLoginOnly = 0, kAll = 1, kImpossible = 2, kRequired = 3 };

/// What a client's pre-login message asks for.
/// \throws ProtocolError
[[nodiscard]] Encryption WantedEncryption(QByteArrayView preLogin);
/// The answer to it.
[[nodiscard]] QByteArray PreLoginAnswer(Encryption encryption);

struct LoginMessage {
  quint32 version = 0;  ///< for example 0x74000004
  int packetSize = 0;
  QString host;
  QString user;
  QString password;
  QString application;
  QString server;
  QString database;
  std::vector<quint8> features;  ///< numbers of the extensions that the client knows
};
/// \throws ProtocolError
[[nodiscard]] LoginMessage ReadLogin(QByteArrayView body);

}  // namespace qbx::tds
