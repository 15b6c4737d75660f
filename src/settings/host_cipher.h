// The cipher of stored passwords.

#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <optional>

#include "diagnostics/log_file.h"

namespace qbx {

/// Marks a password of the options table as enciphered.
inline constexpr char kMarkedSecretPrefix[] = "b64!/";

/// Enciphers and deciphers passwords with the key of this installation (XSalsa20-Poly1305: a changed text does not
/// decipher).
///
/// An enciphered text is base64 on one line, so it fits an INI or registry value. The key file holds 64 hexadecimal
/// digits.
class HostCipher {
 public:
  /// \param keyFile  path; the file is read at the first use. Empty for no key.
  HostCipher(QString keyFile, const LogFile& log);

  [[nodiscard]] const QString& KeyFile() const { return keyFile_; }

  /// \return the enciphered text, a different one each time; nothing when the key cannot be used (`error` then says why
  ///         and what to do)
  [[nodiscard]] std::optional<QString> Encipher(const QString& text, QString* error);

  /// \param what  names the value in the log
  /// \return the text; empty, with one log line, when it cannot be deciphered. An empty text gives an empty text.
  [[nodiscard]] QString Decipher(const QString& enciphered, const QString& what);

  /// Why the value could not be deciphered when it was read last; empty when it could, or was never read.
  /// \param what  as in `Decipher`
  [[nodiscard]] QString Failure(const QString& what) const { return failures_.value(what); }

  /// The value of an option: deciphered after the marker "b64!/", unchanged without it.
  [[nodiscard]] QString Reveal(const QString& stored, const QString& what);

  /// Makes a key file that only its owner may read. An existing file is left alone: without it, the texts that it
  /// enciphered would be lost.
  /// \return empty, or what went wrong
  [[nodiscard]] static QString CreateKeyFile(const QString& path);

 private:
  [[nodiscard]] bool LoadKey(QString* error);

  QString keyFile_;
  const LogFile& log_;
  QByteArray key_;
  QHash<QString, QString> failures_;
};

}  // namespace qbx
