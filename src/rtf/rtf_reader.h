// Rich text in.

#pragma once

#include <QString>
#include <QStringList>
#include <QTextDocument>

namespace qbx {

/// What is read of a text at most; what stands behind is left out.
inline constexpr qsizetype kMaxRtfCharacters = 32'000'000;
/// Groups that stand deeper in one another are passed over.
inline constexpr qsizetype kMaxRtfDepth = 500;

/// What a letter holds that the document has no place for, in plain words for the user ("tables", "headers and footers"),
/// in alphabetical order. A letter that is edited and stored loses it; the text of tables and text boxes stays.
using RtfLosses = QStringList;

/// Whether a text begins as RTF does.
[[nodiscard]] bool BeginsAsRtf(const QString& text);

/// Puts a text into a document, whose contents and undo steps go. RTF is read with its fonts, colours, paragraphs,
/// lists, page breaks and pictures; anything else is plain text. Whatever is damaged or unknown is passed over, so there
/// is always a document.
///
/// Characters beyond ASCII are taken as they are, also in RTF: merging puts them there.
RtfLosses ReadRtf(const QString& text, QTextDocument& document);

}  // namespace qbx
