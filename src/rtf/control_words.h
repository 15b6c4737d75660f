// The control words that the reader knows. Used inside this folder only.

#pragma once

#include <QStringView>
#include <variant>

#include "rtf/formats.h"

namespace qbx {

/// What becomes of the text in a group.
enum class RtfDestination {
  Text,   ///< it is shown
  Skip,   ///< nothing in it counts
  Quiet,  ///< its own text does not count, but groups in it may
  FontTable,
  ColourTable,
  ListTable,
  ListOverrides,
  LevelText,  ///< of the list table: what stands before a list item
  Picture,
  FieldCode,      ///< \fldinst: what a field is
  ShapeProperty,  ///< \sn: the name of one
  OldMarker,      ///< \pn: the list that a paragraph belongs to, in the old way
};

struct InsertCharacter {
  char16_t unit;
};
/// \b and \b0; \ulnone has `on` false.
struct SetFlag {
  bool RtfCharacter::*flag;
  bool on = true;
};
struct SetCharacter {
  int RtfCharacter::*member;
  int value;
};
struct CharacterNumber {
  int RtfCharacter::*member;
  int most;
  int unsaid = 0;  ///< where no number stands
};
struct SetParagraph {
  int RtfParagraph::*member;
  int value;
};
struct ParagraphNumber {
  int RtfParagraph::*member;
  int most = kMaxTwips;
};
/// Where a shape stands, in twips.
struct RtfShape {
  int left = 0;
  int right = 0;
  int top = 0;
  int bottom = 0;
};
struct ShapeEdge {
  int RtfShape::*member;
};
/// Paper and margins, which are kept for the writer.
struct PageWord {};
enum class RtfCommand {
  Nothing,
  Star,
  Paragraph,
  Page,
  Section,
  SectionGoesOn,
  Cell,
  Row,
  Plain,
  ParagraphDefaults,
  TabStop,
  Unicode,
  UnicodeSkip,
  CodePage,
  MacCodePage,
  PcCodePage,
  DefaultFont,
  DefaultTab,
  Columns,
  LetterSpacing,
  Shape,
  ShapeValue,
  TextBox,
};

using RtfAction = std::variant<RtfCommand, InsertCharacter, SetFlag, SetCharacter, CharacterNumber, SetParagraph,
                               ParagraphNumber, ShapeEdge, PageWord, RtfDestination>;

struct RtfWord {
  const char16_t* name;
  RtfAction action;
  const char* loss = nullptr;  ///< what an edit of a letter with this word loses, for the user
};

inline constexpr char kRtfDrawings[] = "drawings and text boxes";

/// \return null for a word that the reader passes over
[[nodiscard]] const RtfWord* FindRtfWord(QStringView name);

}  // namespace qbx
