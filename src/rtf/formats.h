// What RTF says about characters and paragraphs, in its own units: twips (1/1440 inch) and half points. For use in this
// folder only.

#pragma once

#include <QList>
#include <QTextFormat>
#include <QTextOption>

namespace qbx {

/// Lengths of a document are in pixels of 1/96 inch.
inline constexpr double kTwipsAPixel = 15;
/// Longer lengths are cut to this one, 22 inches.
inline constexpr int kMaxTwips = 31680;
inline constexpr int kMaxFontHalfPoints = 3276;
inline constexpr int kMaxTabs = 64;
inline constexpr int kMaxListLevel = 8;
inline constexpr int kMaxFontName = 64;
inline constexpr int kMaxFonts = 500;
/// The time that Qt's lists take grows with the square of their length.
inline constexpr int kMaxListItems = 100;
/// The distance between a list item's bullet and its text, where none is given.
inline constexpr int kMarkerTwips = 360;

/// Properties of a document for which Qt has none.
enum RtfProperty {
  kMarkerIndent = QTextFormat::UserProperty + 0x520,  ///< of a paragraph in a list: first-line indent in twips
  kPictureWords,                                      ///< of a picture: its control words, unchanged
  kPictureBytes,                                      ///< of a picture: its bytes, unchanged
  kPageWords,                                         ///< of the root frame: paper and margins, from name to number
};

struct RtfCharacter {
  int font = -1;  ///< -1 for the default font of the letter
  int halfPoints = 24;
  int colour = 0;  ///< index into the colour table; 0 for the window's text colour
  int highlight = 0;
  int script = 0;  ///< 1: superscript, -1: subscript, 0: neither
  bool bold = false;
  bool italic = false;
  bool underline = false;
  bool strikeOut = false;
  bool capitals = false;
  bool smallCapitals = false;
  bool hidden = false;
  bool deleted = false;  ///< deleted in tracked changes

  bool operator==(const RtfCharacter&) const = default;
};

struct RtfParagraph {
  int alignment = Qt::AlignLeft;
  int left = 0;
  int right = 0;
  int firstLine = 0;
  int before = 0;
  int after = 0;
  int spacing = 0;  ///< 0 for the spacing of the font
  /// 1: `spacing` is in 240ths of a line. 0: in twips; at least that many when positive, exactly when negative.
  int spacingMultiple = 0;
  int pageBreakBefore = 0;
  int list = 0;                                      ///< number of a list override (\ls), 0 for none
  int level = 0;                                     ///< of that list
  int marker = QTextListFormat::ListStyleUndefined;  ///< of a list in the old syntax (\pn)
  int nextTab = QTextOption::LeftTab;                ///< kind of the tab stop that \tx will set
  QList<QTextOption::Tab> tabs = {};                 ///< positions in twips from the page's margin

  bool operator==(const RtfParagraph&) const = default;
};

}  // namespace qbx
