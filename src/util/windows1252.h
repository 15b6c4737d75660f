// The Windows-1252 character set.

#pragma once

#include <QByteArray>
#include <QString>

namespace qbx {

/// Encodes a text, one byte a character. A character that the set lacks becomes "?", a surrogate pair one "?".
[[nodiscard]] QByteArray ToWindows1252(const QString& text);

/// Decodes bytes. The five unused codes (81, 8D, 8F, 90 and 9D) become the control characters of the same number, and
/// are encoded again from them.
[[nodiscard]] QString FromWindows1252(const QByteArray& bytes);

/// Decodes a text file of unknown encoding: as UTF-8 when the bytes are valid UTF-8, otherwise as Windows-1252.
[[nodiscard]] QString FromFileBytes(const QByteArray& bytes);

}  // namespace qbx
