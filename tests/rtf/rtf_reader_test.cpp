#include "rtf/rtf_reader.h"

#include <gtest/gtest.h>

#include "describe.h"
#include "rtf/missing_fonts.h"
#include "support/printing.h"

namespace qbx {
namespace {

struct ReadCase {
  const char* what;
  QString rtf;  ///< between "{\rtf1" with two fonts and two colours, and "}"
  QString expected;
};

const QString kHead =
    u"{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0 Tahoma;}{\\f1\\fcharset204 Arial;}}{\\colortbl;\\red255;\\blue128;}"_qs;

TEST(RtfReaderTest, ReadsLooksAndText) {
  const std::vector<ReadCase> cases{
      {"looks of characters", u"a\\b b\\i c\\b0\\ul d\\plain\\strike e\\caps f\\caps0\\scaps g\\plain\\super h"_qs,
       u"a[b]b[b i]c[i ul]d[strike]e[strike caps]f[strike scaps]g[super]h"_qs},
      {"a look ends with its group", u"{\\b a{\\i b}}c{\\fs20\\f1 d}"_qs, u"[b]a[b i]b[]c[10pt Arial]d"_qs},
      {"colours", u"\\cf1 a\\cf2\\highlight1 b\\cf0\\highlight0 c\\cf99 d"_qs,
       u"[#ff0000]a[#000080 on #ff0000]b[]cd"_qs},
      {"paragraphs", u"\\qc a\\par\\pard\\li300\\ri150\\fi-75\\sb60\\sa45 b\\par"_qs,
       u"<centre>a\n<left 20 right 10 first -5 before 4 after 3 tabs 5L>b"_qs},
      {"line spacing", u"\\sl360\\slmult1 a\\par\\sl-300\\slmult0 b\\par\\sl300 c\\par\\sl240\\slmult1 d"_qs,
       u"<150%>a\n<exactly 20>b\n<at least 20>c\nd"_qs},
      {"tab stops, from where the line begins", u"\\li150\\tx450\\tqr\\tx1500\\tqdec\\tx2250 a\\tab b"_qs,
       u"<left 10 tabs 20L 90R 140D>a\tb"_qs},
      {"page breaks", u"a\\page b\\par\\page c\\par\\pard\\pagebb d\\sect\\pard e\\sect\\sbknone f"_qs,
       u"a\n<page>b\n<page>c\n<page>d\n<page>e\nf"_qs},
      {"an empty paragraph, and none at the end", u"a\\par\\par b\\par"_qs, u"a\n\nb"_qs},
      {"bullets in the old way",
       u"\\pard{\\pntext\\'b7\\tab}{\\*\\pn\\pnlvlblt{\\pntxtb\\'b7}}\\fi-75\\li75 a\\par{\\pntext x}b\\par\\pard c"_qs,
       u"<left 5 disc 1>a\n<left 5 disc 2>b\nc"_qs},
      {"lists of a table",
       u"{\\*\\listtable{\\list{\\listlevel\\levelnfc0{\\leveltext\\'03(\\'00);}}{\\listlevel\\levelnfc23{\\leveltext\\'01o;}}"
       u"\\listid7}}{\\*\\listoverridetable{\\listoverride\\listid7\\ls3}}\\ls3 a\\par\\ilvl1 b\\par\\ilvl0 c\\par\\ls9 d"_qs,
       u"<(1)>a\n<circle 1>b\n<(2)>c\nd"_qs},
      {"characters by name", u"\\emdash\\endash\\lquote\\rdblquote\\bullet a\\~b\\_c\\line d\\tab e\\\\\\{\\}"_qs,
       u"—–‘”•a\u00A0b\u2011c\u2028d\te\\{}"_qs},
      {"bytes by the font", u"\\'e9\\'80{\\f1\\'cf\\'f0}\\'e9"_qs, u"é€[Arial]Пр[]é"_qs},
      {"Unicode", u"\\u8364?\\uc2\\u233\\'65\\'66\\u-10179??\\u-8553??{\\uc0\\u233}\\u9731 ab\\u65533{}c"_qs,
       u"€é🚗é☃\uFFFDc"_qs},
      {"what merging put in", u"Dear Zoë Müller\r\n & Söhne\t£\u2029x\uFDD0y"_qs,
       u"Dear Zoë Müller & Söhne\t£\u2028xy"_qs},
      {"a table", u"\\trowd a\\cell\\cell b\\cell\\row c\\cell d\\par e\\cell\\row f"_qs, u"a\t\tb\nc\td\ne\nf"_qs},
      {"what is passed over",
       u"{\\info{\\title x}}{\\header x}{\\*\\unknown x}{\\stylesheet{x;}}{\\v x}{\\pntext x}a{\\*\\bkmkstart x}\\unknown5 b"_qs,
       u"ab"_qs},
      {"fields and boxes",
       u"{\\field{\\*\\fldinst DATE}{\\fldrslt a}}b{\\shp{\\*\\shpinst{\\sp{\\sn x}{\\sv 1}}{\\shptxt c\\par d}}}e"_qs,
       u"ab\nc\nd\ne"_qs},
      {"a picture", u"a{\\pict\\pngblip\\picwgoal300\\pichgoal150 89 5}{\\pict\\wmetafile8\\picw2540\\pich1270 01}"_qs,
       u"a[picture 20x10][picture 96x48]"_qs},
      {"damage", u"a\\'zz\\'4\\u\\bin9999 b"_qs, u"azz"_qs},
      {"more ends than groups", u"a}b"_qs, u"a"_qs},
  };
  for (const ReadCase& read : cases) {
    QTextDocument document;
    ReadRtf(kHead + read.rtf + u'}', document);
    EXPECT_EQ(Described(document), read.expected) << read.what;
  }
}

TEST(RtfReaderTest, SaysWhatAnEditLoses) {
  QTextDocument document;
  EXPECT_EQ(
      ReadRtf(u"{\\rtf1 {\\header x}\\trowd a\\cell\\row{\\footnote x}{\\v x}\\brdrt{\\field{\\*\\fldinst DATE}}}"_qs,
              document),
      (QStringList{u"borders and shading"_qs, u"fields and links"_qs, u"footnotes"_qs, u"headers and footers"_qs,
                   u"hidden text"_qs, u"tables"_qs}));
  const QString picture =
      u"{\\rtf1{\\field{\\*\\fldinst SHAPE}{\\fldrslt{\\shp{\\*\\shpinst{\\sp{\\sn pib}{\\sv{\\pict\\pngblip 8950}}}}}}}}"_qs;
  EXPECT_EQ(ReadRtf(picture, document), QStringList()) << "a picture that stands in a shape";
}

TEST(RtfReaderTest, OtherTextsAreLoadedAsTheyAre) {
  QTextDocument document;
  for (const QString& text : {u"Dear {contact},\n\\par \u20AC"_qs, QString(), u"see {\\rtf1 x}"_qs}) {
    ReadRtf(text, document);
    EXPECT_EQ(document.toPlainText(), text);
  }
  ReadRtf(u"\uFEFF\r\n{\\RTF1 a}"_qs, document);
  EXPECT_EQ(document.toPlainText(), u"a"_qs);
}

TEST(RtfReaderTest, StopsAtItsLimits) {
  QTextDocument document;
  ReadRtf(u"{\\rtf1 a"_qs + u"{"_qs.repeated(100'000) + u"deep"_qs + u"}"_qs.repeated(100'000) + u"b}"_qs, document);
  EXPECT_EQ(document.toPlainText(), u"ab"_qs);
  const QString rest(kMaxRtfCharacters, u'x');
  EXPECT_EQ(ReadRtf(rest + u"yz"_qs, document).size(), 1);
  EXPECT_EQ(document.characterCount(), kMaxRtfCharacters + 1);
}

TEST(RtfReaderTest, NamesFontsThatAreMissing) {
  QTextDocument document;
  ReadRtf(u"{\\rtf1{\\fonttbl{\\f0 No Such Font;}}\\f0 a\\b b}"_qs, document);
  const QList<MissingFont> missing = MissingFonts(document);
  ASSERT_EQ(missing.size(), 1);
  EXPECT_EQ(missing[0].name, u"No Such Font"_qs);
  EXPECT_NE(missing[0].shownAs, missing[0].name);
}

}  // namespace
}  // namespace qbx
