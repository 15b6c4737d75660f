#include "settings/host_cipher.h"

#include <sodium.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace qbx {
namespace {

constexpr qsizetype kNonceSize = crypto_secretbox_NONCEBYTES;
constexpr qsizetype kMacSize = crypto_secretbox_MACBYTES;
constexpr qsizetype kKeySize = crypto_secretbox_KEYBYTES;

const unsigned char* Bytes(const QByteArray& array, qsizetype offset = 0) {
  return reinterpret_cast<const unsigned char*>(array.constData()) + offset;
}

unsigned char* Bytes(QByteArray& array, qsizetype offset = 0) {
  return reinterpret_cast<unsigned char*>(array.data()) + offset;
}

unsigned long long Length(qsizetype size) {
  return static_cast<unsigned long long>(size);
}

/// The deciphered text of a box; nothing when the box was not made with this key.
std::optional<QString> OpenBox(const QByteArray& box, const QByteArray& key) {
  if (box.size() < kNonceSize + kMacSize) return std::nullopt;
  QByteArray plain(box.size() - kNonceSize - kMacSize, '\0');
  const int failed = crypto_secretbox_open_easy(Bytes(plain), Bytes(box, kNonceSize), Length(box.size() - kNonceSize),
                                                Bytes(box), Bytes(key));
  if (failed != 0) return std::nullopt;
  return QString::fromUtf8(plain);
}

}  // namespace

HostCipher::HostCipher(QString keyFile, const LogFile& log) : keyFile_(std::move(keyFile)), log_(log) {}

bool HostCipher::LoadKey(QString* error) {
  if (!key_.isEmpty()) return true;
  if (keyFile_.isEmpty()) {
    *error = QStringLiteral("No key file is set. Name one as KeyFile in section Service of the INI file.");
    return false;
  }
  QFile file(keyFile_);
  if (!file.open(QIODevice::ReadOnly)) {
    *error = QStringLiteral("The key file %1 could not be read: %2.").arg(keyFile_, file.errorString());
    return false;
  }
  // A key file has 64 digits; a far longer file is no key file.
  const QByteArray digits = file.read(1024).trimmed();
  const QByteArray key = QByteArray::fromHex(digits);
  if (digits.size() != 2 * kKeySize || key.size() != kKeySize || key.toHex() != digits.toLower()) {
    *error = QStringLiteral("The key file %1 does not hold 64 hexadecimal digits.").arg(keyFile_);
    return false;
  }
  if (sodium_init() < 0) {
    *error = QStringLiteral("The cipher could not be started.");
    return false;
  }
  key_ = key;
  return true;
}

std::optional<QString> HostCipher::Encipher(const QString& text, QString* error) {
  if (!LoadKey(error)) return std::nullopt;
  const QByteArray plain = text.toUtf8();
  QByteArray box(kNonceSize + kMacSize + plain.size(), '\0');
  randombytes_buf(box.data(), static_cast<size_t>(kNonceSize));
  crypto_secretbox_easy(Bytes(box, kNonceSize), Bytes(plain), Length(plain.size()), Bytes(std::as_const(box)),
                        Bytes(key_));
  return QString::fromLatin1(box.toBase64());
}

QString HostCipher::Decipher(const QString& enciphered, const QString& what) {
  failures_.remove(what);
  if (enciphered.isEmpty()) return {};
  QString error;
  if (LoadKey(&error)) {
    const auto decoded = QByteArray::fromBase64Encoding(enciphered.toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    const std::optional<QString> text = decoded ? OpenBox(*decoded, key_) : std::nullopt;
    if (text) return *text;
    error = QStringLiteral("It was not enciphered with this installation's key.");
  }
  const QString failure = QStringLiteral("The stored %1 could not be deciphered. %2").arg(what, error);
  failures_.insert(what, failure);
  log_.WriteLog(failure);
  return {};
}

QString HostCipher::Reveal(const QString& stored, const QString& what) {
  const QString marker = QString::fromLatin1(kMarkedSecretPrefix);
  return stored.startsWith(marker) ? Decipher(stored.mid(marker.size()), what) : stored;
}

QString HostCipher::CreateKeyFile(const QString& path) {
  if (QFile::exists(path)) return QStringLiteral("The key file %1 is there already; it was left as it is.").arg(path);
  if (sodium_init() < 0) return QStringLiteral("The cipher could not be started.");
  if (!QDir().mkpath(QFileInfo(path).absolutePath())) {
    return QStringLiteral("The folder of the key file %1 could not be made.").arg(path);
  }
  QByteArray key(kKeySize, '\0');
  crypto_secretbox_keygen(Bytes(key));
  QSaveFile file(path);
  const bool written = file.open(QIODevice::WriteOnly) &&
                       file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner) &&
                       file.write(key.toHex() + '\n') == 2 * kKeySize + 1 && file.commit();
  return written ? QString()
                 : QStringLiteral("The key file %1 could not be written: %2.").arg(path, file.errorString());
}

}  // namespace qbx
