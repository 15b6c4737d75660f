#include "rtf/rtf_writer.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextList>
#include <QUrl>

#include "describe.h"
#include "merge/merge_fields.h"
#include "rtf/letter.h"
#include "support/printing.h"

namespace qbx {
namespace {

QTextCharFormat Look(const QString& family, double points) {
  QTextCharFormat format;
  format.setFontFamilies({family});
  format.setFontPointSize(points);
  return format;
}

/// A letter with everything that the editor can make.
void MakeLetter(QTextDocument& document) {
  const QTextCharFormat plain = Look(u"Tahoma"_qs, 12);
  QTextCursor cursor(&document);
  QTextCharFormat loud = Look(u"Łódź; Sans"_qs, 8.5);
  loud.setFontWeight(QFont::Bold);
  loud.setFontItalic(true);
  loud.setFontUnderline(true);
  loud.setFontStrikeOut(true);
  loud.setForeground(QColor(1, 2, 3));
  loud.setBackground(Qt::yellow);
  QTextBlockFormat paragraph;
  paragraph.setAlignment(Qt::AlignJustify);
  paragraph.setLeftMargin(40);
  paragraph.setRightMargin(-3);
  paragraph.setTextIndent(-20);
  paragraph.setTopMargin(7);
  paragraph.setBottomMargin(9);
  paragraph.setLineHeight(150, QTextBlockFormat::ProportionalHeight);
  paragraph.setTabPositions({QTextOption::Tab(20, QTextOption::LeftTab), QTextOption::Tab(90, QTextOption::RightTab)});
  paragraph.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
  cursor.insertText(u"Dear {contact}, £5\u2028x\ty\u00A0 \\ {}\u2019 日本 🚗 1"_qs, plain);
  cursor.insertBlock(paragraph);
  cursor.insertText(u"3 loud"_qs, loud);
  cursor.insertText(u" and plain"_qs, plain);
  cursor.insertBlock(QTextBlockFormat(), plain);
  cursor.insertText(u"one"_qs, plain);
  QTextListFormat list;
  list.setStyle(QTextListFormat::ListDisc);
  list.setIndent(0);
  cursor.createList(list);
  cursor.insertBlock();
  cursor.insertText(u"two"_qs, plain);
  cursor.insertBlock();
  list.setStyle(QTextListFormat::ListUpperRoman);
  list.setNumberPrefix(u"("_qs);
  list.setNumberSuffix(u")"_qs);
  cursor.createList(list);
  cursor.insertText(u"three"_qs, plain);
  cursor.insertBlock(QTextBlockFormat(), Look(u"Arial"_qs, 20));
  cursor.insertBlock(QTextBlockFormat(), plain);
  document.addResource(QTextDocument::ImageResource, QUrl(u"signature"_qs), QImage(20, 10, QImage::Format_RGB32));
  QTextImageFormat picture;
  picture.setName(u"signature"_qs);
  picture.setWidth(40);
  picture.setHeight(30);
  cursor.insertImage(picture);
}

TEST(RtfWriterTest, WhatIsWrittenIsReadAgain) {
  QTextDocument document;
  MakeLetter(document);
  const QString rtf = WriteRtf(document);
  QTextDocument again;
  EXPECT_TRUE(ReadRtf(rtf, again).isEmpty());
  QString expected = Described(document);
  expected.replace(u"Łódź; Sans"_qs, u"Łódź Sans"_qs);  // a semicolon ends the name of a font
  EXPECT_EQ(Described(again), expected);
  EXPECT_EQ(again.findBlockByNumber(5).charFormat().fontPointSize(), 20) << "of an empty paragraph";
  for (const QChar unit : rtf)
    ASSERT_TRUE(unit < u'\x7F') << rtf.toStdString();
}

TEST(RtfWriterTest, FieldsStayInOnePiece) {
  QTextDocument document;
  QTextCursor cursor(&document);
  QTextCharFormat bold = Look(u"Tahoma"_qs, 12);
  bold.setFontWeight(QFont::Bold);
  for (const QString& part : {u"{con"_qs, u"tact}{ma"_qs, u"ke} {not a field at all, it is too long}"_qs}) {
    cursor.insertText(part, bold);
    bold.setFontItalic(!bold.fontItalic());
  }
  const QString rtf = WriteRtf(document);
  EXPECT_TRUE(rtf.contains(u"\\b \\{contact\\}\\i \\{make\\}\\i0  \\{not"_qs)) << rtf.toStdString();
  ReadRtf(MergeFields(rtf, {.contact = u"Zoë 1"_qs, .make = u"Škoda"_qs}, QDate()), document);
  EXPECT_EQ(document.toPlainText(), u"Zoë 1Škoda {not a field at all, it is too long}"_qs);
}

TEST(RtfWriterTest, PicturesAreGivenBackAsTheyCame) {
  QTextDocument document;
  ReadRtf(
      u"{\\rtf1{\\*\\shppict{\\pict{\\*\\picprop x}\\wmetafile8\\picw70\\picwgoal300\\pichgoal90\\bin2 A\u00FF}}"
      u"{\\nonshppict{\\pict 00}}}"_qs,
      document);
  EXPECT_TRUE(WriteRtf(document).contains(u"{\\pict\\wmetafile8\\picw70\\picwgoal300\\pichgoal90\n41ff}"_qs));
}

TEST(LetterTest, OnlyAnEditChangesWhatIsStored) {
  QTextDocument document;
  Letter letter(document);
  const QString came = u"{\\rtf1 {\\header x}\\unknown a}\r\n"_qs;
  EXPECT_EQ(letter.Load(came).size(), 1);
  EXPECT_EQ(letter.Stored(), came);

  QTextCursor cursor(&document);
  cursor.insertText(u"edited "_qs);
  const QString edited = letter.Stored();
  EXPECT_TRUE(edited.contains(u"edited"_qs));
  cursor.insertText(u"twice "_qs);
  EXPECT_TRUE(letter.Stored().contains(u"edited twice"_qs));
  while (document.isUndoAvailable())
    document.undo();
  EXPECT_EQ(letter.Stored(), came);
  document.clear();
  document.setModified(true);
  EXPECT_EQ(letter.Stored(), QString()) << "nothing is left";
}

}  // namespace
}  // namespace qbx
