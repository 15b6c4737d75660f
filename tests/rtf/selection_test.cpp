#include "rtf/selection.h"

#include <gtest/gtest.h>

#include <QTextBlock>

#include "describe.h"
#include "rtf/rtf_reader.h"
#include "support/printing.h"

namespace qbx {
namespace {

class SelectionTest : public testing::Test {
 protected:
  QTextCursor Select(int from, int to) {
    QTextCursor cursor(&document_);
    cursor.setPosition(from);
    cursor.setPosition(to, QTextCursor::KeepAnchor);
    return cursor;
  }
  SelectionLook LookOf(int from, int to) { return LookOfSelection(Select(from, to), QTextCharFormat()); }
  void Read(const char16_t* rtf) {
    ReadRtf(u"{\\rtf1{\\fonttbl{\\f0 Tahoma;}{\\f1 Arial;}}\\f0 "_qs + QString::fromUtf16(rtf) + u'}', document_);
  }

  QTextDocument document_;
};

TEST_F(SelectionTest, WhatASelectionHasInCommon) {
  Read(u"\\b ab\\i\\f1\\fs30 cd\\par\\pard\\qc\\ul ef\\par");
  EXPECT_TRUE(LookOf(0, 2).bold);
  EXPECT_FALSE(LookOf(0, 2).italic) << "what only touches it does not count";
  EXPECT_EQ(LookOf(0, 2).family, u"Tahoma"_qs);
  EXPECT_EQ(LookOf(0, 2).points, 12);
  const SelectionLook mixed = LookOf(1, 7);
  EXPECT_TRUE(mixed.bold);
  EXPECT_FALSE(mixed.italic || mixed.underline);
  EXPECT_EQ(mixed.family, QString());
  EXPECT_EQ(mixed.points, 0);
  EXPECT_EQ(mixed.alignment, Qt::Alignment());
  EXPECT_EQ(LookOf(5, 7).alignment, Qt::AlignHCenter);
  EXPECT_FALSE(LookOf(1, 1).bold) << "what is typed next";
}

TEST_F(SelectionTest, SetsAndRemovesBullets) {
  Read(u"a\\par b\\par c\\par");
  SetBullets(Select(0, 3), true);
  EXPECT_EQ(Described(document_), u"<left 24 disc 1>a\n<left 24 disc 2>b\nc"_qs);
  EXPECT_TRUE(LookOf(0, 3).bullets);
  EXPECT_FALSE(LookOf(0, 5).bullets);
  SetBullets(Select(2, 2), false);
  EXPECT_EQ(Described(document_), u"<left 24 disc 1>a\nb\nc"_qs);
  document_.undo();
  document_.undo();
  EXPECT_EQ(Described(document_), u"a\nb\nc"_qs);
}

TEST_F(SelectionTest, SetsAndRemovesPageBreaks) {
  Read(u"abc");
  QTextCursor cursor = Select(1, 1);
  TogglePageBreak(cursor);
  EXPECT_EQ(Described(document_), u"a\n<page>bc"_qs);
  EXPECT_TRUE(LookOf(3, 3).pageBreak);
  cursor.setPosition(3);
  cursor.insertBlock();
  DropCopiedBreaks(cursor, 2);
  EXPECT_EQ(Described(document_), u"a\n<page>b\nc"_qs);
  document_.undo();
  cursor.setPosition(2);
  TogglePageBreak(cursor);
  EXPECT_EQ(Described(document_), u"a\nbc"_qs);
}

}  // namespace
}  // namespace qbx
