// The control words that the reader knows. For use in this folder only.

#pragma once

#include <QStringView>
#include <variant>

#include "rtf/formats.h"

namespace qbx {

/// What happens to the text in a group.
enum class RtfDestination {
  Text,   ///< shown
  Skip,   ///< ignored with all groups in it
  Quiet,  ///< ignored, except for the groups in it
  FontTable,
  ColourTable,
  ListTable,
  ListOverrides,
  LevelText,  ///< of the list table: the text before a list item
  Picture,
  FieldCode,      ///< \fldinst: the kind of a field
  ShapeProperty,  ///< \sn: the name of a shape's property
  OldMarker,      ///< \pn: the list of a paragraph in the old syntax
};

struct InsertCharacter {
  char16_t unit;
};
/// \b sets, \b0 clears; \ulnone has `on` false.
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
  int unsaid = 0;  ///< the value when the word has no number
};
struct SetParagraph {
  int RtfParagraph::*member;
  int value;
};
struct ParagraphNumber {
  int RtfParagraph::*member;
  int most = kMaxTwips;
};
/// The edges of a shape, in twips.
struct RtfShape {
  int left = 0;
  int right = 0;
  int top = 0;
  int bottom = 0;
};
struct ShapeEdge {
  int RtfShape::*member;
};
/// Paper and margins, kept for the writer.
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
  const char* loss = nullptr;  ///< what a letter with this word loses by an edit, for the user
};

inline constexpr char kRtfDrawings[] = "drawings and text boxes";

/// \return null for a word that the reader ignores
[[nodiscard]] const RtfWord* FindRtfWord(QStringView name);

}  // namespace qbx
