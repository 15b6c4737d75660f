// What an editor does with the selected part of a letter, without a widget.

#pragma once

#include <QString>
#include <QTextCursor>

namespace qbx {

/// The format that all parts of a selection share.
struct SelectionLook {
  QString family = {};  ///< empty when there are several
  double points = 0;    ///< 0 when there are several
  bool bold = false;
  bool italic = false;
  bool underline = false;
  Qt::Alignment alignment = {};  ///< left, centre, right or justified; none when there are several
  bool bullets = false;
  bool pageBreak = false;  ///< whether one is before the cursor's paragraph
};

/// \param typing  the format of what is typed next, used when nothing is selected
[[nodiscard]] SelectionLook LookOfSelection(const QTextCursor& selection, const QTextCharFormat& typing);

/// Makes the selected paragraphs items of one list, or removes them from theirs. One undo step.
void SetBullets(QTextCursor selection, bool on);

/// Begins a new page at the cursor (before the paragraph when the cursor is at its start), or removes the page break
/// there. One undo step.
void TogglePageBreak(QTextCursor& cursor);

/// Removes the page breaks that paragraphs got when they were split off one that begins a page: from after `start` up
/// to the cursor's paragraph. Belongs to the previous undo step.
void DropCopiedBreaks(const QTextCursor& cursor, int start);

}  // namespace qbx
