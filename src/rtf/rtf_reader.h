// Reading rich text.

#pragma once

#include <QString>
#include <QStringList>
#include <QTextDocument>

namespace qbx {

/// The most characters of a text that are read; the rest is left out.
inline constexpr qsizetype kMaxRtfCharacters = 32'000'000;
/// Groups nested deeper are skipped.
inline constexpr qsizetype kMaxRtfDepth = 500;

/// What the document cannot hold of a letter, in plain words for the user ("tables", "headers and footers"), in
/// alphabetical order. A letter that is edited and stored loses it; the text of tables and text boxes stays.
using RtfLosses = QStringList;

/// Reads a text into a document and drops the document's contents and undo steps. RTF is read with its fonts, colours,
/// paragraphs, lists, page breaks and pictures; any other text is plain text. Damaged and unknown parts are skipped, so
/// reading always succeeds.
///
/// Characters beyond ASCII are taken as they are, also in RTF, because merging inserts them.
RtfLosses ReadRtf(const QString& text, QTextDocument& document);

}  // namespace qbx
