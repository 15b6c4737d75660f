// Puts what the reader finds into a document, paragraph by paragraph. For use in this folder only.

#pragma once

#include <QHash>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <utility>
#include <vector>

#include "rtf/formats.h"
#include "rtf/picture.h"
#include "rtf/tables.h"

namespace qbx {

class DocumentBuilder {
 public:
  /// Empties the document. The tables may still be filled until the first paragraph ends.
  DocumentBuilder(QTextDocument& document, const RtfFonts& fonts, const RtfColours& colours, const RtfLists& lists);

  /// \param defaultFont  for characters that name no font
  void SetDefaultFont(int defaultFont) { defaultFont_ = defaultFont; }

  void AddText(QStringView text, const RtfCharacter& look);
  void AddPicture(const RtfPicture& picture);
  /// Puts the next text of this paragraph into another cell of a table.
  void EndCell() { ++cells_; }

  /// Ends the paragraph with the format that holds at its end.
  void EndParagraph(const RtfParagraph& look, const RtfCharacter& mark);
  /// Ends the paragraph unless it is empty.
  void EndStarted(const RtfParagraph& look, const RtfCharacter& mark);
  /// Begins a new page.
  void BreakPage(const RtfParagraph& look, const RtfCharacter& mark);
  /// Drops a page break that nothing has followed yet.
  void ForgetBreak();
  void Finish(const RtfParagraph& look, const RtfCharacter& mark);

 private:
  struct Run {
    QString text;
    QTextCharFormat format;
  };

  const QTextCharFormat& FormatOf(const RtfCharacter& look);
  const QTextBlockFormat& FormatOf(const RtfParagraph& look, bool inList);
  void AddToList(const RtfParagraph& look, const QTextListFormat& format);

  QTextDocument& document_;
  const RtfFonts& fonts_;
  const RtfColours& colours_;
  const RtfLists& lists_;
  QTextCursor cursor_;
  std::vector<Run> runs_;  ///< of the current paragraph
  RtfCharacter lastLook_;
  QTextCharFormat lastFormat_;
  bool lastKnown_ = false;  ///< whether `lastFormat_` is that of `lastLook_`
  RtfParagraph lastParagraph_;
  QTextBlockFormat lastBlockFormat_;
  bool lastInList_ = false;
  bool goesOn_ = false;  ///< whether text may be added to the last run, because the format is the same
  bool anyParagraph_ = false;
  bool breakBefore_ = false;
  int cells_ = 0;
  int pictures_ = 0;
  int defaultFont_ = 0;
  QHash<std::pair<int, int>, QTextList*> openLists_;  ///< by list and level; list 0 is the old syntax
};

}  // namespace qbx
