// Writing rich text.

#pragma once

#include <QString>
#include <QTextDocument>

namespace qbx {

/// Writes a document as RTF that word processors and classic rich-edit controls load. The result is ASCII: other
/// characters are written as \u, followed by the nearest byte of Windows-1252.
///
/// Merge fields are written as merging expects them: with escaped braces and in one piece. When a part of a field has
/// another format, the format of the field's first character is used.
[[nodiscard]] QString WriteRtf(const QTextDocument& document);

}  // namespace qbx
