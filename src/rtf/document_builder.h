// Puts what the reader finds into a document, paragraph by paragraph. Used inside this folder only.

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
  /// The document is emptied; the tables may be filled until the first paragraph ends.
  DocumentBuilder(QTextDocument& document, const RtfFonts& fonts, const RtfColours& colours, const RtfLists& lists);

  /// \param defaultFont  of characters that name none
  void SetDefaultFont(int defaultFont) { defaultFont_ = defaultFont; }

  void AddText(QStringView text, const RtfCharacter& look);
  void AddPicture(const RtfPicture& picture);
  /// The next text of this paragraph stands in another cell of a table.
  void EndCell() { ++cells_; }

  /// Ends the paragraph, which has the look that holds at its end.
  void EndParagraph(const RtfParagraph& look, const RtfCharacter& mark);
  /// The same, unless there is nothing in it.
  void EndStarted(const RtfParagraph& look, const RtfCharacter& mark);
  /// What follows stands on a new page.
  void BreakPage(const RtfParagraph& look, const RtfCharacter& mark);
  /// Takes a page break back that nothing followed yet.
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
  std::vector<Run> runs_;  ///< of the paragraph that has not ended
  RtfCharacter lastLook_;
  QTextCharFormat lastFormat_;
  bool lastKnown_ = false;  ///< the two above belong together
  RtfParagraph lastParagraph_;
  QTextBlockFormat lastBlockFormat_;
  bool lastInList_ = false;
  bool goesOn_ = false;  ///< the last run has the last look, so that text may be added to it
  bool anyParagraph_ = false;
  bool breakBefore_ = false;
  int cells_ = 0;
  int pictures_ = 0;
  int defaultFont_ = 0;
  QHash<std::pair<int, int>, QTextList*> openLists_;  ///< by list and level; list 0: in the old way
};

}  // namespace qbx
