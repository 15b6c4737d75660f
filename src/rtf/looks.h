// The formats of a document's characters and paragraphs in terms of RTF. For use in this folder only.

#pragma once

#include <QByteArray>
#include <QFont>
#include <QTextBlock>

#include "rtf/formats.h"
#include "rtf/writer_tables.h"

namespace qbx {

/// \param defaultFont  of the document, for what the format leaves open
/// \param tables       receive the font and the colours
[[nodiscard]] RtfCharacter LookOf(const QTextCharFormat& format, const QFont& defaultFont, WriterTables& tables);

/// The format of a paragraph, without a page break before it.
[[nodiscard]] RtfParagraph LookOf(const QTextBlock& block, WriterTables& tables);

/// The control words that change one format into another, without a blank after the last.
[[nodiscard]] QByteArray WordsBetween(const RtfCharacter& from, const RtfCharacter& to);

/// The control words of a paragraph, beginning with \pard and without its list.
[[nodiscard]] QByteArray WordsOf(const RtfParagraph& look);

}  // namespace qbx
