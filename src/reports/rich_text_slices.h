// A letter on pages: laid out once for its width, and cut between lines.

#pragma once

#include <QString>
#include <QTextDocument>
#include <memory>

namespace qbx {

/// Lays RTF out in a width. \return never null
[[nodiscard]] std::shared_ptr<QTextDocument> LayOutRichText(const QString& rtf, qreal width);

/// Where a slice of a document ends.
struct RichTextCut {
  qreal to = 0;            ///< from the top of the document
  bool whole = false;      ///< whether nothing follows the slice
  bool pageBreak = false;  ///< whether the text has a page break here
};

/// The longest slice that begins at `from` and is not taller than `room`: whole lines, at most up to the next page
/// break of the text. A single line that is taller than `room` is cut through when `force` is set.
/// \param force  forbids an empty slice, because `room` is a whole page
[[nodiscard]] RichTextCut CutRichText(const QTextDocument& document, qreal from, qreal room, bool force);

}  // namespace qbx
