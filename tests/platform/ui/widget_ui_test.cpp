#include "platform/ui/widget_ui.h"

#include <gtest/gtest.h>

#include <QtTest/QtTest>
#include <QtWidgets>

namespace qbx {
namespace {

/// A window with a command, as the program has them: what its parts heard while logic was at work.
class WidgetUiTest : public testing::Test {
 protected:
  WidgetUiTest() {
    auto* layout = new QVBoxLayout(&window);
    for (QWidget* widget :
         {static_cast<QWidget*>(&command), static_cast<QWidget*>(&pause), static_cast<QWidget*>(&text)})
      layout->addWidget(widget);
    QObject::connect(&command, &QPushButton::clicked, [this] { ++clicks; });
    QObject::connect(&pause, &QPushButton::clicked, [this] { ++pauses; });
    QObject::connect(&shortcut, &QAction::triggered, [this] { ++triggers; });
    shortcut.setShortcut(QKeySequence(Qt::Key_F5));
    window.addAction(&shortcut);
    ui.SetMainWindow(&window);
    window.show();
    window.activateWindow();
    (void)QTest::qWaitForWindowActive(&window);
  }

  /// Does something in the midst of events that logic lets run.
  void WhileWorking(const std::function<void()>& act) {
    bool done = false;
    QTimer::singleShot(0, &window, [&] {
      act();
      done = true;
    });
    while (!done)
      ui.PumpEvents();
  }

  static QWidget* Shown(const QString& name) {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (widget->objectName() == name && widget->isVisible()) return widget;
    }
    return nullptr;
  }

  WidgetUi ui;
  QWidget window;
  QPushButton command{"&Command"};
  QPushButton pause;
  QLineEdit text;
  QAction shortcut;
  int clicks = 0;
  int pauses = 0;
  int triggers = 0;
};

/// Input through the window system, as a person's.
void ClickThrough(QWindow* window, QPoint at) {
  QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, at);
}

TEST_F(WidgetUiTest, InputIsDroppedWhileLogicWorksAndCountsAgainAfterwards) {
  text.setFocus();
  WhileWorking([this] {
    QTest::mouseClick(&command, Qt::LeftButton);
    ClickThrough(window.windowHandle(), command.geometry().center());
    QTest::keyClicks(&text, "abc");
    QTest::keyClick(window.windowHandle(), Qt::Key_X);
    QTest::keyClick(window.windowHandle(), Qt::Key_F5);
    QTest::keyClick(window.windowHandle(), Qt::Key_C, Qt::AltModifier);
  });
  QTest::qWait(1);
  EXPECT_EQ(clicks + triggers, 0);
  EXPECT_FALSE(command.isDown());
  EXPECT_EQ(text.text(), QString());

  ClickThrough(window.windowHandle(), command.geometry().center());
  QTest::keyClick(window.windowHandle(), Qt::Key_F5);
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(triggers, 1);
}

TEST_F(WidgetUiTest, AnAcceleratorClicksBeforeAnythingElseCanBegin) {
  QTest::keyClick(window.windowHandle(), Qt::Key_C, Qt::AltModifier);
  EXPECT_EQ(clicks, 1);
  WhileWorking([] { QTest::qWait(150); });  // longer than a button is held down for the eye
  EXPECT_EQ(clicks, 1);
}

TEST_F(WidgetUiTest, AClickThatBeginsOrEndsWhileLogicWorksIsNoClick) {
  WhileWorking([this] { QTest::mousePress(&command, Qt::LeftButton); });
  QTest::mouseRelease(&command, Qt::LeftButton);
  QTest::mousePress(&command, Qt::LeftButton);
  WhileWorking([this] { QTest::mouseRelease(&command, Qt::LeftButton); });
  EXPECT_EQ(clicks, 0);
  EXPECT_FALSE(command.isDown());
}

TEST_F(WidgetUiTest, WhatIsAllowedStaysUsable) {
  WidgetUi::AllowWhileWorking(pause);
  WhileWorking([this] {
    ClickThrough(window.windowHandle(), pause.geometry().center());
    ClickThrough(window.windowHandle(), command.geometry().center());
  });
  EXPECT_EQ(pauses, 1);
  EXPECT_EQ(clicks, 0);
}

TEST_F(WidgetUiTest, HeldTimersAndRepeatingButtonsWaitWhileLogicWorks) {
  int fired = 0;
  QTimer timer;
  timer.setSingleShot(true);
  QObject::connect(&timer, &QTimer::timeout, [&fired] { ++fired; });
  WidgetUi::HoldWhileWorking(timer);
  command.setAutoRepeat(true);
  command.setAutoRepeatDelay(1);
  command.setAutoRepeatInterval(1);
  timer.start(1);
  QTest::mousePress(&command, Qt::LeftButton);
  WhileWorking([] { QTest::qWait(30); });
  EXPECT_EQ(fired + clicks, 0);
  EXPECT_TRUE(QTest::qWaitFor([&] { return fired == 1 && clicks > 1; }));
  QTest::mouseRelease(&command, Qt::LeftButton);
}

TEST_F(WidgetUiTest, ClosingIsRefusedWhileLogicWorks) {
  WhileWorking([this] {
    EXPECT_FALSE(window.close());
    window.windowHandle()->close();
    QEvent quit(QEvent::Quit);
    QCoreApplication::sendEvent(QCoreApplication::instance(), &quit);
  });
  EXPECT_TRUE(window.isVisible());
  EXPECT_TRUE(window.close());
}

TEST_F(WidgetUiTest, TheStatusBoxIsCancelledByItsButtonOrByEsc) {
  for (const bool byKey : {false, true}) {
    text.setFocus();
    ui.ShowStatusBox({.message = "Working...", .showCancel = true});
    QWidget* box = Shown("frmProcessing");
    ASSERT_NE(box, nullptr);
    EXPECT_FALSE(ui.StatusCancelled());
    WhileWorking([&] {
      if (byKey) {
        QTest::keyClick(window.windowHandle(), Qt::Key_Escape);
      } else {
        QTest::mouseClick(box->findChild<QPushButton*>("cmdCancel"), Qt::LeftButton);
      }
    });
    EXPECT_TRUE(ui.StatusCancelled()) << byKey;
    ui.CloseStatusBox();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window) && text.hasFocus()) << "the keyboard is back where it was";
  }
  ui.ShowStatusBox({.message = "Working..."});
  WhileWorking([this] { QTest::keyClick(window.windowHandle(), Qt::Key_Escape); });
  EXPECT_FALSE(ui.StatusCancelled()) << "no Cancel is offered";
  ui.CloseStatusBox();
}

TEST_F(WidgetUiTest, ARightClickOnItsTextClosesTheStatusBoxAndRestoresThePointer) {
  ui.ShowStatusBox({.message = "Working..."});
  ui.SetBusy(true);
  QWidget* box = Shown("frmProcessing");
  ASSERT_NE(box, nullptr);
  WhileWorking([&] { QTest::mouseClick(box->findChild<QLabel*>("lblMessage"), Qt::RightButton); });
  EXPECT_FALSE(box->isVisible());
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(WidgetUiTest, AMessageIsAnsweredAmidTheWorkWithTheNormalPointer) {
  ui.SetBusy(true);
  ui.SetBusy(true);
  MessageAnswer answer = MessageAnswer::kOk;
  WhileWorking([&] {
    QTimer::singleShot(0, &window, [&] {
      EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      EXPECT_EQ(box->text(), "One\nTwo\n<b>");
      EXPECT_EQ(box->defaultButton(), box->button(QMessageBox::No));
      QTest::mouseClick(box->button(QMessageBox::Yes), Qt::LeftButton);
    });
    answer = ui.ShowMessage(
        {.text = "One\rTwo\r\n<b>", .buttons = MessageButtons::kYesNo, .defaultAnswer = MessageAnswer::kNo});
    QTest::mouseClick(&command, Qt::LeftButton);
  });
  EXPECT_EQ(answer, MessageAnswer::kYes);
  EXPECT_EQ(clicks, 0) << "the work goes on behind a closed gate";
  ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
  ui.SetBusy(false);
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr) << "one switch, however often it was set";
}

TEST_F(WidgetUiTest, EscInAMessageIsTheAnswerThatDoesLeast) {
  const std::pair<MessageButtons, MessageAnswer> cases[] = {{MessageButtons::kOk, MessageAnswer::kOk},
                                                            {MessageButtons::kYesNo, MessageAnswer::kNo},
                                                            {MessageButtons::kYesNoCancel, MessageAnswer::kCancel}};
  for (const auto& [buttons, expected] : cases) {
    QTimer::singleShot(0, &window, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
    EXPECT_EQ(ui.ShowMessage({.text = "?", .buttons = buttons}), expected);
  }
}

TEST_F(WidgetUiTest, AQuitThatLogicAskedForWaitsForItsEnd) {
  QDialog dialog(&window);
  dialog.open();
  WhileWorking([this] { ui.RequestQuit(); });
  ui.Pause(5);
  EXPECT_TRUE(window.isVisible());
  QTest::qWait(5);
  EXPECT_FALSE(window.isVisible());
  EXPECT_FALSE(dialog.isVisible());
}

}  // namespace
}  // namespace qbx
