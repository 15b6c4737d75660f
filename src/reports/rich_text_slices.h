// A letter on its pages: laid out once in its width, cut between lines.

#pragma once

#include <QString>
#include <QTextDocument>
#include <memory>

namespace qbx {

/// RTF laid out in a width. \return never null
[[nodiscard]] std::shared_ptr<QTextDocument> LayOutRichText(const QString& rtf, qreal width);

/// Where a slice of a document ends.
struct RichTextCut {
  qreal to = 0;            ///< below the top of the document
  bool whole = false;      ///< nothing is left behind it
  bool pageBreak = false;  ///< the text itself wants a new page here
};

/// The longest slice that begins at `from` and is no taller than `room`: whole lines, up to the next page break of the text. A line that is taller than
/// the room alone is cut through when the slice would be empty.
/// \param force  something has to be taken, since the room is a whole page
[[nodiscard]] RichTextCut CutRichText(const QTextDocument& document, qreal from, qreal room, bool force);

}  // namespace qbx
