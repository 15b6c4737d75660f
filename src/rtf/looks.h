// What a document says about characters and paragraphs, in the words of RTF. Used inside this folder only.

#pragma once

#include <QByteArray>
#include <QFont>
#include <QTextBlock>

#include "rtf/formats.h"
#include "rtf/writer_tables.h"

namespace qbx {

/// \param defaultFont  of the document, for what the format leaves open
/// \param tables       get the font and the colours
[[nodiscard]] RtfCharacter LookOf(const QTextCharFormat& format, const QFont& defaultFont, WriterTables& tables);

/// Without the page break before it.
[[nodiscard]] RtfParagraph LookOf(const QTextBlock& block, WriterTables& tables);

/// The control words that turn one look into another; no blank behind the last.
[[nodiscard]] QByteArray WordsBetween(const RtfCharacter& from, const RtfCharacter& to);

/// The control words of a paragraph, which begin with \pard; without its list.
[[nodiscard]] QByteArray WordsOf(const RtfParagraph& look);

}  // namespace qbx
