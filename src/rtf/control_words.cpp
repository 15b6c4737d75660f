#include "rtf/control_words.h"

#include <QHash>

namespace qbx {
namespace {

using C = RtfCharacter;
using P = RtfParagraph;
using enum RtfCommand;
using D = RtfDestination;

constexpr const char* kTables = "tables";
constexpr const char* kHeaders = "headers and footers";
constexpr const char* kNotes = "footnotes";
constexpr const char* kComments = "comments";
constexpr const char* kObjects = "embedded objects";
constexpr const char* kBorders = "borders and shading";

constexpr RtfWord kWords[] = {
    // Characters with a name.
    {u"~", InsertCharacter{u'\u00A0'}},
    {u"-", InsertCharacter{u'\u00AD'}},
    {u"_", InsertCharacter{u'\u2011'}},
    {u"tab", InsertCharacter{u'\t'}},
    {u"line", InsertCharacter{u'\u2028'}},
    {u"lbr", InsertCharacter{u'\u2028'}},
    {u"emdash", InsertCharacter{u'\u2014'}},
    {u"endash", InsertCharacter{u'\u2013'}},
    {u"emspace", InsertCharacter{u'\u2003'}},
    {u"enspace", InsertCharacter{u'\u2002'}},
    {u"qmspace", InsertCharacter{u'\u2005'}},
    {u"bullet", InsertCharacter{u'\u2022'}},
    {u"lquote", InsertCharacter{u'\u2018'}},
    {u"rquote", InsertCharacter{u'\u2019'}},
    {u"ldblquote", InsertCharacter{u'\u201C'}},
    {u"rdblquote", InsertCharacter{u'\u201D'}},
    {u"zwj", InsertCharacter{u'\u200D'}},
    {u"zwnj", InsertCharacter{u'\u200C'}},
    {u"ltrmark", InsertCharacter{u'\u200E'}},
    {u"rtlmark", InsertCharacter{u'\u200F'}},
    // Character formats.
    {u"b", SetFlag{&C::bold}},
    {u"i", SetFlag{&C::italic}},
    {u"ul", SetFlag{&C::underline}},
    {u"uld", SetFlag{&C::underline}},
    {u"uldash", SetFlag{&C::underline}},
    {u"uldashd", SetFlag{&C::underline}},
    {u"uldashdd", SetFlag{&C::underline}},
    {u"uldb", SetFlag{&C::underline}},
    {u"ulth", SetFlag{&C::underline}},
    {u"ulw", SetFlag{&C::underline}},
    {u"ulwave", SetFlag{&C::underline}},
    {u"ulnone", SetFlag{&C::underline, false}},
    {u"strike", SetFlag{&C::strikeOut}},
    {u"striked", SetFlag{&C::strikeOut}},
    {u"caps", SetFlag{&C::capitals}},
    {u"scaps", SetFlag{&C::smallCapitals}},
    {u"v", SetFlag{&C::hidden}},
    {u"deleted", SetFlag{&C::deleted}},
    {u"super", SetCharacter{&C::script, 1}},
    {u"sub", SetCharacter{&C::script, -1}},
    {u"nosupersub", SetCharacter{&C::script, 0}},
    {u"f", CharacterNumber{&C::font, INT_MAX}},
    {u"fs", CharacterNumber{&C::halfPoints, kMaxFontHalfPoints, 24}},
    {u"cf", CharacterNumber{&C::colour, INT_MAX}},
    {u"highlight", CharacterNumber{&C::highlight, INT_MAX}},
    {u"cb", CharacterNumber{&C::highlight, INT_MAX}},
    {u"chcbpat", CharacterNumber{&C::highlight, INT_MAX}},
    {u"plain", Plain},
    // Paragraphs.
    {u"par", Paragraph},
    {u"pard", ParagraphDefaults},
    {u"ql", SetParagraph{&P::alignment, Qt::AlignLeft}},
    {u"qr", SetParagraph{&P::alignment, Qt::AlignRight}},
    {u"qc", SetParagraph{&P::alignment, Qt::AlignHCenter}},
    {u"qj", SetParagraph{&P::alignment, Qt::AlignJustify}},
    {u"li", ParagraphNumber{&P::left}},
    {u"ri", ParagraphNumber{&P::right}},
    {u"fi", ParagraphNumber{&P::firstLine}},
    {u"sb", ParagraphNumber{&P::before}},
    {u"sa", ParagraphNumber{&P::after}},
    {u"sl", ParagraphNumber{&P::spacing}},
    {u"slmult", ParagraphNumber{&P::spacingMultiple}},
    {u"pagebb", SetParagraph{&P::pageBreakBefore, 1}},
    {u"ls", ParagraphNumber{&P::list, INT_MAX}},
    {u"ilvl", ParagraphNumber{&P::level, kMaxListLevel}},
    {u"tx", TabStop},
    {u"tql", SetParagraph{&P::nextTab, QTextOption::LeftTab}},
    {u"tqr", SetParagraph{&P::nextTab, QTextOption::RightTab}},
    {u"tqc", SetParagraph{&P::nextTab, QTextOption::CenterTab}},
    {u"tqdec", SetParagraph{&P::nextTab, QTextOption::DelimiterTab}},
    {u"page", Page},
    {u"sect", Section},
    {u"sbknone", SectionGoesOn},
    {u"sbkcol", SectionGoesOn},
    // Lists in the old syntax.
    {u"pn", D::OldMarker},
    {u"pnlvlblt", SetParagraph{&P::marker, QTextListFormat::ListDisc}},
    {u"pnlvlbody", SetParagraph{&P::marker, QTextListFormat::ListDecimal}},
    {u"pndec", SetParagraph{&P::marker, QTextListFormat::ListDecimal}},
    {u"pnucltr", SetParagraph{&P::marker, QTextListFormat::ListUpperAlpha}},
    {u"pnlcltr", SetParagraph{&P::marker, QTextListFormat::ListLowerAlpha}},
    {u"pnucrm", SetParagraph{&P::marker, QTextListFormat::ListUpperRoman}},
    {u"pnlcrm", SetParagraph{&P::marker, QTextListFormat::ListLowerRoman}},
    // Words for the whole letter.
    {u"ansicpg", CodePage},
    {u"mac", MacCodePage},
    {u"pc", PcCodePage},
    {u"deff", DefaultFont},
    {u"deftab", DefaultTab},
    {u"u", Unicode},
    {u"uc", UnicodeSkip},
    {u"paperw", PageWord{}},
    {u"paperh", PageWord{}},
    {u"margl", PageWord{}},
    {u"margr", PageWord{}},
    {u"margt", PageWord{}},
    {u"margb", PageWord{}},
    {u"landscape", PageWord{}},
    // Groups.
    {u"*", Star},
    {u"shppict", Nothing},
    {u"fonttbl", D::FontTable},
    {u"colortbl", D::ColourTable},
    {u"listtable", D::ListTable},
    {u"listoverridetable", D::ListOverrides},
    {u"leveltext", D::LevelText},
    {u"pict", D::Picture},
    {u"levelnumbers", D::Skip},
    {u"listname", D::Skip},
    {u"liststylename", D::Skip},
    {u"listpicture", D::Skip},
    {u"falt", D::Skip},
    {u"pntext", D::Skip},
    {u"listtext", D::Skip},
    {u"pntxta", D::Skip},
    {u"pntxtb", D::Skip},
    {u"nonshppict", D::Skip},
    {u"shprslt", D::Skip},
    {u"fldinst", D::FieldCode},
    {u"objdata", D::Skip},
    {u"objclass", D::Skip},
    {u"objname", D::Skip},
    {u"nonesttables", D::Skip},
    {u"stylesheet", D::Skip},
    {u"info", D::Skip},
    {u"filetbl", D::Skip},
    {u"private", D::Skip},
    {u"xe", D::Skip},
    {u"tc", D::Skip},
    {u"datafield", D::Skip},
    // What the editor cannot hold.
    {u"trowd", Nothing, kTables},
    {u"cell", Cell, kTables},
    {u"nestcell", Cell, kTables},
    {u"row", Row, kTables},
    {u"nestrow", Row, kTables},
    {u"header", D::Skip, kHeaders},
    {u"headerl", D::Skip, kHeaders},
    {u"headerr", D::Skip, kHeaders},
    {u"headerf", D::Skip, kHeaders},
    {u"footer", D::Skip, kHeaders},
    {u"footerl", D::Skip, kHeaders},
    {u"footerr", D::Skip, kHeaders},
    {u"footerf", D::Skip, kHeaders},
    {u"footnote", D::Skip, kNotes},
    {u"annotation", D::Skip, kComments},
    {u"atnid", D::Skip},
    {u"atnauthor", D::Skip},
    {u"shpinst", Shape},
    {u"sn", D::ShapeProperty},
    {u"sv", ShapeValue},
    {u"shpleft", ShapeEdge{&RtfShape::left}},
    {u"shpright", ShapeEdge{&RtfShape::right}},
    {u"shptop", ShapeEdge{&RtfShape::top}},
    {u"shpbottom", ShapeEdge{&RtfShape::bottom}},
    {u"shptxt", TextBox, kRtfDrawings},
    {u"do", D::Quiet, kRtfDrawings},
    {u"dptxbxtext", TextBox, kRtfDrawings},
    {u"object", D::Quiet, kObjects},
    {u"result", D::Text},
    {u"cols", Columns},
    {u"brdrt", Nothing, kBorders},
    {u"brdrb", Nothing, kBorders},
    {u"brdrl", Nothing, kBorders},
    {u"brdrr", Nothing, kBorders},
    {u"box", Nothing, kBorders},
    {u"chbrdr", Nothing, kBorders},
    {u"cbpat", Nothing, kBorders},
    {u"expndtw", LetterSpacing},
};

}  // namespace

const RtfWord* FindRtfWord(QStringView name) {
  static const QHash<QStringView, const RtfWord*> kIndex = [] {
    QHash<QStringView, const RtfWord*> index;
    for (const RtfWord& word : kWords)
      index.insert(QStringView(word.name), &word);
    return index;
  }();
  return kIndex.value(name);
}

}  // namespace qbx
