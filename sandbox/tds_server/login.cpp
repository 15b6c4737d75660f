#include "tds_server/login.h"

#include <algorithm>

#include "tds_server/bytes.h"

namespace qbx::tds {
namespace {

constexpr quint8 kVersionOption = 0;
constexpr quint8 kEncryptionOption = 1;
constexpr quint8 kEnd = 0xFF;
constexpr quint8 kHasFeatures = 0x10;

/// The pairs of offset and length at the front of a login message, in their order.
struct LoginParts {
  explicit LoginParts(QByteArrayView message) : whole(message) {}

  [[nodiscard]] QByteArrayView Bytes(int part, int unit) const {
    ByteReader pair(whole.sliced(std::min(whole.size(), qsizetype{36} + part * 4)));
    const int offset = pair.U16();
    ByteReader place(whole.sliced(std::min<qsizetype>(offset, whole.size())));
    return place.Bytes(qsizetype{pair.U16()} * unit);
  }
  [[nodiscard]] QString Text(int part) const {
    const QByteArrayView bytes = Bytes(part, 2);
    return ByteReader(bytes).Text(bytes.size() / 2);
  }

  QByteArrayView whole;
};

enum Part {
  kHostPart,
  kUserPart,
  kPasswordPart,
  kApplicationPart,
  kServerPart,
  kExtensionPart,
  kLibraryPart,
  kLanguagePart,
  kDatabasePart
};

/// A password is scrambled, not encrypted.
QString Unveiled(QByteArrayView veiled) {
  QByteArray bytes = veiled.toByteArray();
  for (char& byte : bytes) {
    const unsigned mixed = static_cast<quint8>(byte) ^ 0xA5U;
    byte = static_cast<char>(mixed << 4 | mixed >> 4);
  }
  return ByteReader(bytes).Text(bytes.size() / 2);
}

std::vector<quint8> ReadFeatures(const LoginParts& parts) {
  const quint32 at = ByteReader(parts.Bytes(kExtensionPart, 1)).U32();
  ByteReader list(parts.whole.sliced(std::min<qsizetype>(at, parts.whole.size())));
  std::vector<quint8> features;
  for (quint8 id = list.U8(); id != kEnd; id = list.U8()) {
    features.push_back(id);
    list.Skip(list.U32());
  }
  return features;
}

}  // namespace

Encryption WantedEncryption(QByteArrayView preLogin) {
  ByteReader options(preLogin);
  for (quint8 option = options.U8(); option != kEnd; option = options.U8()) {
    const QByteArrayView place = options.Bytes(4);
    const auto at = [&place](int i) { return static_cast<quint8>(place[i]); };
    const qsizetype offset = at(0) << 8 | at(1);
    if (option != kEncryptionOption) continue;
    ByteReader value(preLogin.sliced(std::min(offset, preLogin.size())));
    return static_cast<Encryption>(value.U8());
  }
  return Encryption::kImpossible;
}

QByteArray PreLoginAnswer(Encryption encryption) {
  constexpr int kVersionLength = 6;
  constexpr int kFirst = 11;  // after the list of two options
  ByteWriter answer;
  answer.U8(kVersionOption).BigEndian(kFirst, 2).BigEndian(kVersionLength, 2);
  answer.U8(kEncryptionOption).BigEndian(kFirst + kVersionLength, 2).BigEndian(1, 2).U8(kEnd);
  answer.U8(11).U8(0).BigEndian(3000, 2).U16(0).U8(static_cast<unsigned>(encryption));
  return answer.Data();
}

LoginMessage ReadLogin(QByteArrayView body) {
  ByteReader start(body);
  start.Skip(4);
  LoginMessage login;
  login.version = start.U32();
  login.packetSize = static_cast<int>(start.U32());
  start.Skip(15);
  const bool hasFeatures = (start.U8() & kHasFeatures) != 0;
  const LoginParts parts(body);
  login.host = parts.Text(kHostPart);
  login.user = parts.Text(kUserPart);
  login.password = Unveiled(parts.Bytes(kPasswordPart, 2));
  login.application = parts.Text(kApplicationPart);
  login.server = parts.Text(kServerPart);
  login.database = parts.Text(kDatabasePart);
  if (hasFeatures) login.features = ReadFeatures(parts);
  return login;
}

}  // namespace qbx::tds
