// The letter editor as somebody uses it who has no mouse.

#include "marketing/ui/letter_editor.h"

#include <gtest/gtest.h>

#include <QtTest>
#include <QtWidgets>

#include "marketing/ui/spelling.h"
#include "startup/started_application.h"
#include "support/printing.h"

namespace qbx {
namespace {

class LetterEditorTest : public testing::Test {
 protected:
  LetterEditorTest() : editor_(&window_), behind_(&window_) {
    auto* layout = new QVBoxLayout(&window_);
    for (QWidget* widget : std::initializer_list<QWidget*>{&editor_, &behind_})
      layout->addWidget(widget);
    QObject::connect(&editor_, &LetterEditor::Edited, [this] { ++edits_; });
    window_.show();
    QApplication::setActiveWindow(&window_);
    Box().setFocus();
  }

  QTextEdit& Box() { return *editor_.findChild<QTextEdit*>("rtfLetter"); }
  QAction& Action(const char* name) { return *editor_.findChild<QAction*>(name); }
  QString Letter() { return Box().toPlainText(); }
  void Select(int from, int to) {
    QTextCursor cursor = Box().textCursor();
    cursor.setPosition(from);
    cursor.setPosition(to, QTextCursor::KeepAnchor);
    Box().setTextCursor(cursor);
  }
  void Press(Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, with);
  }

  QWidget window_;
  LetterEditor editor_;
  QLineEdit behind_;
  int edits_ = 0;
};

TEST_F(LetterEditorTest, ButtonsFollowTheSelectionAndChangeIt) {
  const QString stored = "{\\rtf1{\\fonttbl{\\f0 Gone Sans;}}\\f0\\fs17 plain \\b bold\\b0\\par\\qr right\\par}";
  editor_.Load(stored);
  EXPECT_EQ(edits_, 0);
  EXPECT_EQ(editor_.Stored(), stored);
  EXPECT_EQ(editor_.findChild<QComboBox*>("cmbFontName")->currentText(), "Gone Sans");
  EXPECT_EQ(editor_.findChild<QComboBox*>("cmbFontSize")->currentText(), "8.5");
  Select(6, 10);
  EXPECT_TRUE(Action("Bold").isChecked() && Action("AlignLeft").isChecked());
  Select(12, 12);
  EXPECT_TRUE(Action("AlignRight").isChecked() && !Action("Bold").isChecked());
  Select(0, 5);
  Press(Qt::Key_I, Qt::ControlModifier);
  Press(Qt::Key_E, Qt::ControlModifier);
  EXPECT_TRUE(Action("Italic").isChecked() && Action("Center").isChecked());
  EXPECT_GT(edits_, 0);
  EXPECT_TRUE(editor_.Stored().contains("\\i plain\\i0"));
  Press(Qt::Key_Z, Qt::ControlModifier);
  Press(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(editor_.Stored(), stored) << "all undone";
}

TEST_F(LetterEditorTest, NamesMissingFontsAsTheyComeAndGo) {
  const auto names = [this](const char* font) {
    return editor_.findChild<QLabel*>("lblLetterNote")->text().contains(font);
  };
  auto& fonts = *editor_.findChild<QComboBox*>("cmbFontName");
  editor_.Load("{\\rtf1{\\fonttbl{\\f0 Liberation Sans;}}\\f0 text}");
  EXPECT_FALSE(names("Fonts"));
  Select(0, 4);
  fonts.lineEdit()->setText("Gone Sans");
  QTest::keyClick(fonts.lineEdit(), Qt::Key_Return);
  EXPECT_TRUE(names("Gone Sans (shown as"));
  Press(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !names("Gone Sans"); }));
}

TEST_F(LetterEditorTest, TabLeavesAndCtrlTabStays) {
  Press(Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(Letter(), "\t");
  Press(Qt::Key_Tab);
  EXPECT_TRUE(behind_.hasFocus());
}

TEST_F(LetterEditorTest, TheClipboardHoldsPlainText) {
  editor_.Load("{\\rtf1 a\\b bold}");
  Select(1, 5);
  Press(Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(Letter(), "a");
  EXPECT_EQ(QGuiApplication::clipboard()->mimeData()->formats(), QStringList("text/plain"));
  Select(0, 0);
  Press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(Letter(), "bolda");
  Select(0, 4);
  EXPECT_FALSE(Action("Bold").isChecked()) << "it takes the look of where it is put";
}

TEST_F(LetterEditorTest, EnterEndsAListAndKeepsAPageBreakAlone) {
  Press(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
  QTest::keyClicks(&Box(), "item");
  Press(Qt::Key_Return);
  EXPECT_TRUE(Action("Bullets").isChecked());
  Press(Qt::Key_Return);
  EXPECT_FALSE(Action("Bullets").isChecked());
  Press(Qt::Key_Return, Qt::ControlModifier);
  EXPECT_TRUE(Action("PageBreak").isChecked());
  QTest::keyClicks(&Box(), "new page");
  Press(Qt::Key_Return);
  EXPECT_FALSE(Action("PageBreak").isChecked());
  EXPECT_EQ(editor_.Stored().count("\\page"), 1);
}

TEST_F(LetterEditorTest, MarksAMisspeltWordOnceItIsLeftAndStoresNoMark) {
  test::StartedApplication program;
  editor_.CheckSpelling(std::make_shared<Spelling>(program.Make()));
  QCoreApplication::processEvents();
  const auto marked = [this] {
    QStringList words;
    for (QTextBlock block = editor_.Document().begin(); block.isValid(); block = block.next()) {
      for (const QTextLayout::FormatRange& mark : block.layout()->formats())
        words << block.text().mid(mark.start, mark.length);
    }
    return words;
  };
  const QString stored = "{\\rtf1 {\\b recieve} \\{dewdate\\}\\par}";
  editor_.Load(stored);
  EXPECT_EQ(marked(), QStringList("recieve"));
  EXPECT_TRUE(edits_ == 0 && editor_.Stored() == stored);
  Select(17, 17);
  QTest::keyClicks(&Box(), " teh");
  EXPECT_EQ(marked().size(), 1);
  QTest::keyClicks(&Box(), " ");
  EXPECT_EQ(marked(), QStringList({"recieve", "teh"}));
  EXPECT_FALSE(editor_.Stored().contains("\\ul"));
  while (Action("Undo").isEnabled())
    Action("Undo").trigger();
  EXPECT_EQ(editor_.Stored(), stored);
}

TEST_F(LetterEditorTest, FindsOnFromTheBeginning) {
  editor_.Load("one two one");
  Press(Qt::Key_F, Qt::ControlModifier);
  QTest::keyClicks(QApplication::focusWidget(), "one");
  for (const int expected : {3, 11, 3}) {
    Press(Qt::Key_Return);
    EXPECT_EQ(Box().textCursor().position(), expected);
  }
  Press(Qt::Key_Escape);
  EXPECT_TRUE(Box().hasFocus());
}

}  // namespace
}  // namespace qbx
