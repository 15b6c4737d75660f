// What RTF says about characters and paragraphs, in its own units: twips (1/1440 inch) and half points. Used inside
// this folder only.

#pragma once

#include <QList>
#include <QTextFormat>
#include <QTextOption>

namespace qbx {

/// Lengths of a document are in pixels of 1/96 inch.
inline constexpr double kTwipsAPixel = 15;
/// The longest length that is believed, 22 inches.
inline constexpr int kMaxTwips = 31680;
inline constexpr int kMaxFontHalfPoints = 3276;
inline constexpr int kMaxTabs = 64;
inline constexpr int kMaxListLevel = 8;
inline constexpr int kMaxFontName = 64;
inline constexpr int kMaxFonts = 500;
/// Qt's lists cost the square of their length.
inline constexpr int kMaxListItems = 100;
/// How far the text of a list item stands behind its bullet where nothing else is said.
inline constexpr int kMarkerTwips = 360;

/// What a document holds besides what Qt has properties for.
enum RtfProperty {
  kMarkerIndent = QTextFormat::UserProperty + 0x520,  ///< of a paragraph in a list: first-line indent in twips
  kPictureWords,                                      ///< of a picture: its control words as they came
  kPictureBytes,                                      ///< of a picture: its bytes as they came
  kPageWords,                                         ///< of the root frame: paper and margins, name to number
};

struct RtfCharacter {
  int font = -1;  ///< -1: the default font of the letter
  int halfPoints = 24;
  int colour = 0;  ///< place in the colour table, 0: the colour of the window's text
  int highlight = 0;
  int script = 0;  ///< 1: superscript, -1: subscript
  bool bold = false;
  bool italic = false;
  bool underline = false;
  bool strikeOut = false;
  bool capitals = false;
  bool smallCapitals = false;
  bool hidden = false;
  bool deleted = false;  ///< by somebody whose changes are tracked

  bool operator==(const RtfCharacter&) const = default;
};

struct RtfParagraph {
  int alignment = Qt::AlignLeft;
  int left = 0;
  int right = 0;
  int firstLine = 0;
  int before = 0;
  int after = 0;
  int spacing = 0;          ///< 0: of the font
  int spacingMultiple = 0;  ///< 1: `spacing` counts 240ths of a line; 0: twips, at least where positive, else exactly
  int pageBreakBefore = 0;
  int list = 0;                                      ///< number of a list override (\ls), 0: none
  int level = 0;                                     ///< in that list
  int marker = QTextListFormat::ListStyleUndefined;  ///< of a list in the old way (\pn)
  int nextTab = QTextOption::LeftTab;                ///< kind of the tab stop that \tx will set
  QList<QTextOption::Tab> tabs = {};                 ///< positions in twips from the margin of the page

  bool operator==(const RtfParagraph&) const = default;
};

}  // namespace qbx
