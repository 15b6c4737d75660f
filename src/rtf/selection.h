// What an editor does with the selected part of a letter, without a window.

#pragma once

#include <QString>
#include <QTextCursor>

namespace qbx {

/// What a selection has in common.
struct SelectionLook {
  QString family = {};  ///< empty where there is more than one
  double points = 0;    ///< 0 where there is more than one
  bool bold = false;
  bool italic = false;
  bool underline = false;
  Qt::Alignment alignment = {};  ///< one of left, centre, right, justified; none where there is more than one
  bool bullets = false;
  bool pageBreak = false;  ///< before the paragraph of the cursor
};

/// \param typing  the look of what is typed next, which counts where nothing is selected
[[nodiscard]] SelectionLook LookOfSelection(const QTextCursor& selection, const QTextCharFormat& typing);

/// Makes the selected paragraphs items of one list, or takes them out of theirs. One undo step.
void SetBullets(QTextCursor selection, bool on);

/// Begins a new page at the cursor, in front of it where it stands at the start of a paragraph; takes the break away where
/// one is. One undo step.
void TogglePageBreak(QTextCursor& cursor);

/// Takes away the page breaks that paragraphs got by being split off one that begins a page: those behind `start` up to
/// that of the cursor. Belongs to the undo step before.
void DropCopiedBreaks(const QTextCursor& cursor, int start);

}  // namespace qbx
