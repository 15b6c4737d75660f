// The Windows-1252 character set.

#pragma once

#include <QByteArray>
#include <QString>

namespace qbx {

/// Encodes a text, one byte a character; a character that the set does not have becomes "?" (one for a surrogate pair).
[[nodiscard]] QByteArray ToWindows1252(const QString& text);

/// Decodes bytes. The five unused codes (81, 8D, 8F, 90 and 9D) give the control character of the same number and come
/// back from it.
[[nodiscard]] QString FromWindows1252(const QByteArray& bytes);

/// Text of a file that people write with whatever editor they have: UTF-8 where the bytes are that, otherwise Windows-1252.
[[nodiscard]] QString FromFileBytes(const QByteArray& bytes);

}  // namespace qbx
