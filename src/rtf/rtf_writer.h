// Rich text out.

#pragma once

#include <QString>
#include <QTextDocument>

namespace qbx {

/// Writes a document as RTF that word processors and classic rich-edit controls load. All of it is ASCII: other characters
/// are written as \u with the nearest byte of Windows-1252 behind it.
///
/// Merge fields come out as merging finds them: braces escaped and in one piece. Where only a part of a field has another
/// look, its first character decides.
[[nodiscard]] QString WriteRtf(const QTextDocument& document);

}  // namespace qbx
