// The Windows-1252 code page, which the host product and the SMS gateway speak.

#pragma once

#include <QByteArray>
#include <QString>

namespace qbx {

/// Every byte has a meaning: the five that the code page leaves open become the control characters of the same number.
[[nodiscard]] QString DecodeWindows1252(const QByteArray& bytes);

/// \return one byte a character; what the code page does not have becomes `replacement`
[[nodiscard]] QByteArray EncodeWindows1252(const QString& text, char replacement = '?');

/// Whether `EncodeWindows1252` needs no replacement.
[[nodiscard]] bool FitsWindows1252(const QString& text);

/// UTF-8 when the bytes are valid UTF-8, else Windows-1252. A byte-order mark is dropped.
[[nodiscard]] QString DecodeUtf8OrWindows1252(const QByteArray& bytes);

}  // namespace qbx
