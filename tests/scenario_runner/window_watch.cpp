#include "window_watch.h"

#include <QtTest>
#include <QtWidgets>

#include "find_control.h"
#include "scenario_error.h"

namespace qbx::scenario {
namespace {

const char* IconName(QMessageBox::Icon icon) {
  switch (icon) {
    case QMessageBox::Information:
      return "information";
    case QMessageBox::Question:
      return "question";
    case QMessageBox::Warning:
      return "exclamation";
    case QMessageBox::Critical:
      return "stop";
    case QMessageBox::NoIcon:
      break;
  }
  return "none";
}

QStringList ButtonTexts(const QMessageBox& box) {
  QStringList texts;
  for (QAbstractButton* button : box.buttons()) {
    if (box.buttonRole(button) != QMessageBox::ActionRole)
      texts += PlainCaption(button->text());  // not "Show Details..."
  }
  return texts;
}

QVariantMap Describe(const QMessageBox& box) {
  // The details of a box have the whole text when it is too long.
  QString text = box.detailedText().isEmpty() ? box.text() : box.detailedText();
  if (!box.informativeText().isEmpty()) text += QStringLiteral("\n\n") + box.informativeText();
  return {{QStringLiteral("text"), PlainLines(text)},
          {QStringLiteral("caption"), box.windowTitle()},
          {QStringLiteral("icon"), QLatin1String(IconName(box.icon()))},
          {QStringLiteral("buttons"), ButtonTexts(box)},
          {QStringLiteral("defaultButton"),
           box.defaultButton() != nullptr ? PlainCaption(box.defaultButton()->text()) : QString()}};
}

void Press(QAbstractButton* button) {
  QTest::mouseClick(button, Qt::LeftButton);
}

}  // namespace

WindowWatch::WindowWatch(Bridge& bridge) : bridge_(bridge) {
  qApp->installEventFilter(this);
}

WindowWatch::~WindowWatch() {
  qApp->removeEventFilter(this);
}

bool WindowWatch::eventFilter(QObject* object, QEvent* event) {
  if (event->type() != QEvent::Show || !object->isWidgetType()) return false;
  QWidget* window = static_cast<QWidget*>(object);
  const bool menu = qobject_cast<QMenu*>(window) != nullptr;
  if (!window->isWindow() || !(window->isModal() || menu)) return false;
  // The window has not begun its event loop yet. The timer fires inside the loop.
  QTimer::singleShot(0, window, [this, window] {
    if (window->isVisible()) Opened(*window);
  });
  return false;
}

void WindowWatch::Opened(QWidget& window) {
  const QPointer<QWidget> alive(&window);
  if (auto* box = qobject_cast<QMessageBox*>(&window)) {
    AnswerBox(*box);
  } else if (auto* dialog = qobject_cast<QFileDialog*>(&window)) {
    AnswerFile(*dialog);
  } else if (auto* menu = qobject_cast<QMenu*>(&window)) {
    ChooseFrom(*menu);
  } else if (window.objectName() == QLatin1String("frmInputBox")) {
    AnswerInput(window);
  } else {
    LetScenarioAct(window);
  }
  if (alive != nullptr && alive->isVisible()) alive->close();
  // The box cannot be closed.
  if (alive != nullptr && alive->isVisible()) {
    if (auto* dialog = qobject_cast<QDialog*>(alive.data()))
      dialog->done(QDialog::Rejected);
    else
      alive->hide();
  }
}

void WindowWatch::AnswerBox(QMessageBox& box) {
  const QPointer<QMessageBox> alive(&box);
  const QVariantMap description = Describe(box);
  messages_ += QVariant(description);
  const QVariantMap answer = bridge_.Invoke(QStringLiteral("box"), {description}).toMap();
  if (alive == nullptr || !alive->isVisible()) return;
  const QString wanted = answer.value(QStringLiteral("press")).toString();
  if (!wanted.isEmpty()) {
    for (QAbstractButton* button : box.buttons()) {
      if (PlainCaption(button->text()).compare(wanted, Qt::CaseInsensitive) != 0) continue;
      Press(button);
      return;
    }
    bridge_.Invoke(QStringLiteral("problem"), {QStringLiteral("The message box \"%1\" has no button \"%2\" but %3.")
                                                   .arg(description.value(QStringLiteral("text")).toString(), wanted,
                                                        ButtonTexts(box).join(QStringLiteral(", ")))});
  }
  // The least harmful button: the one for Escape, or the last one.
  if (box.escapeButton() == nullptr && !box.buttons().isEmpty()) box.buttons().constLast()->click();
}

void WindowWatch::AnswerInput(QWidget& box) {
  const QPointer<QWidget> alive(&box);
  const auto* prompt = box.findChild<QLabel*>(QStringLiteral("lblPrompt"));
  auto* edit = box.findChild<QLineEdit*>(QStringLiteral("txtInput"));
  auto* ok = box.findChild<QAbstractButton*>(QStringLiteral("cmdOK"));
  auto* cancel = box.findChild<QAbstractButton*>(QStringLiteral("cmdCancel"));
  if (prompt == nullptr || edit == nullptr || ok == nullptr || cancel == nullptr) {
    bridge_.Invoke(QStringLiteral("problem"),
                   {QStringLiteral("frmInputBox lacks lblPrompt, txtInput, cmdOK or cmdCancel.")});
    return;
  }
  const QVariantMap description = {{QStringLiteral("prompt"), PlainLines(prompt->text())},
                                   {QStringLiteral("caption"), box.windowTitle()},
                                   {QStringLiteral("text"), edit->text()},
                                   {QStringLiteral("masked"), edit->echoMode() == QLineEdit::Password}};
  inputs_ += QVariant(description);
  const QVariantMap answer = bridge_.Invoke(QStringLiteral("input"), {description}).toMap();
  if (alive == nullptr || !alive->isVisible()) return;
  const QVariant text = answer.value(QStringLiteral("text"));
  if (text.typeId() != QMetaType::QString) {
    Press(cancel);
    return;
  }
  edit->setFocus();
  edit->selectAll();
  QTest::keyClick(edit, Qt::Key_Delete);
  edit->insert(text.toString());
  Press(ok);
}

void WindowWatch::AnswerFile(QFileDialog& dialog) {
  const QPointer<QFileDialog> alive(&dialog);
  const QVariant path = bridge_.Invoke(QStringLiteral("file"), {dialog.windowTitle()});
  if (alive == nullptr || !alive->isVisible() || path.typeId() != QMetaType::QString) return;
  auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  if (name != nullptr) name->setText(path.toString());
  QMetaObject::invokeMethod(&dialog, "accept");
}

void WindowWatch::ChooseFrom(QMenu& menu) {
  const QPointer<QMenu> alive(&menu);
  QStringList entries;
  for (const QAction* action : menu.actions()) {
    if (!action->isSeparator() && action->isVisible() && action->isEnabled()) entries += PlainCaption(action->text());
  }
  const QString chosen = bridge_.Invoke(QStringLiteral("menu"), {entries}).toString();
  if (alive == nullptr || chosen.isEmpty()) return;
  for (QAction* action : menu.actions()) {
    if (!action->isEnabled() || PlainCaption(action->text()) != chosen) continue;
    menu.setActiveAction(action);
    QTest::keyClick(&menu, Qt::Key_Return);
    return;
  }
}

void WindowWatch::LetScenarioAct(QWidget& window) {
  const QPointer<QWidget> alive(&window);
  const QString name = WindowName(window);
  bridge_.Invoke(QStringLiteral("window"), {name, window.windowTitle()});
  if (alive == nullptr || !alive->isVisible()) return;
  bridge_.Invoke(QStringLiteral("stillOpen"), {name});
}

}  // namespace qbx::scenario
