#include "find_control.h"

#include <QtWidgets>

#include "scenario_error.h"

namespace qbx::scenario {
namespace {

bool IsPopup(const QWidget& window) {
  const Qt::WindowType type = window.windowType();
  return type == Qt::Popup || type == Qt::ToolTip;
}

// When a window was opened twice, several controls have the name. The visible one counts.
QObject* FindIn(const QWidget& window, const QString& name) {
  const QList<QWidget*> widgets = window.findChildren<QWidget*>(name);
  for (QWidget* widget : widgets) {
    if (widget->isVisible() && widget->window() == &window) return widget;
  }
  for (QWidget* widget : widgets) {
    if (widget->window() == &window) return widget;
  }
  if (const QMenu* menu = window.findChild<QMenu*>(name)) return menu->menuAction();
  return window.findChild<QAction*>(name);
}

}  // namespace

QString PlainCaption(const QString& caption) {
  QString plain;
  for (qsizetype i = 0; i < caption.size(); ++i) {
    if (caption[i] == QLatin1Char('&') && i + 1 < caption.size()) ++i;
    plain += caption[i];
  }
  return plain;
}

QString PlainLines(const QString& text) {
  return QString(text)
      .replace(QLatin1String("\r\n"), QLatin1String("\n"))
      .replace(QLatin1Char('\r'), QLatin1Char('\n'))
      .replace(QChar::ParagraphSeparator, QLatin1Char('\n'))
      .replace(QChar::LineSeparator, QLatin1Char('\n'));
}

QString WindowName(const QWidget& window) {
  if (!window.objectName().isEmpty()) return window.objectName();
  const QString name = QString::fromLatin1(window.metaObject()->className());
  return name.mid(name.lastIndexOf(QLatin1Char(':')) + 1);
}

QString NearestName(const QWidget* widget) {
  for (const QWidget* at = widget; at != nullptr; at = at->parentWidget()) {
    if (!at->objectName().isEmpty() && !at->objectName().startsWith(QLatin1String("qt_"))) return at->objectName();
  }
  return {};
}

QList<QWidget*> VisibleWindows() {
  QList<QWidget*> windows;
  const auto add = [&windows](QWidget* window) {
    if (window != nullptr && window->isVisible() && !IsPopup(*window) && !windows.contains(window)) windows += window;
  };
  add(QApplication::activeModalWidget());
  const QList<QWidget*> all = QApplication::topLevelWidgets();
  for (QWidget* window : all) {
    if (window->objectName() == QLatin1String("frmMain")) add(window);
  }
  for (QWidget* window : all)
    add(window);
  return windows;
}

QStringList ControlNames(const QWidget& window) {
  QStringList names;
  const auto add = [&names](const QString& name) {
    const bool ofQt = name.startsWith(QLatin1String("qt_")) || name.startsWith(QLatin1String("_q_")) ||
                      name.startsWith(QLatin1String("Scroll"));
    if (!name.isEmpty() && !ofQt) names += name;
  };
  for (const QWidget* widget : window.findChildren<QWidget*>())
    add(widget->objectName());
  for (const QAction* action : window.findChildren<QAction*>())
    add(action->objectName());
  names.removeDuplicates();
  names.sort(Qt::CaseInsensitive);
  return names;
}

QObject* TryFindControl(const QString& name) {
  const qsizetype dot = name.indexOf(QLatin1Char('.'));
  const QList<QWidget*> windows = VisibleWindows();
  for (QWidget* window : windows) {
    if (dot < 0 && WindowName(*window) == name) return window;
    if (dot >= 0 && WindowName(*window) == name.left(dot)) return FindIn(*window, name.mid(dot + 1));
  }
  if (dot >= 0) return nullptr;
  for (QWidget* window : windows) {
    if (QObject* found = FindIn(*window, name)) return found;
  }
  return nullptr;
}

QObject& FindControl(const QString& name) {
  if (QObject* found = TryFindControl(name)) return *found;
  const qsizetype dot = name.indexOf(QLatin1Char('.'));
  QStringList windowNames;
  for (const QWidget* window : VisibleWindows()) {
    windowNames += WindowName(*window);
    if (dot < 0 || windowNames.constLast() == name.left(dot))
      throw ScenarioError(QStringLiteral("There is no control \"%1\"; %2 has %3.")
                              .arg(name, windowNames.constLast(), ControlNames(*window).join(QStringLiteral(", "))));
  }
  throw ScenarioError(windowNames.isEmpty() ? QStringLiteral("There is no control \"%1\": no window is open.").arg(name)
                                            : QStringLiteral("There is no control \"%1\"; the open windows are %2.")
                                                  .arg(name, windowNames.join(QStringLiteral(", "))));
}

QWidget& FindWindow(const QString& name) {
  QStringList names;
  for (QWidget* window : VisibleWindows()) {
    names += WindowName(*window);
    if (names.constLast() == name) return *window;
  }
  throw ScenarioError(
      QStringLiteral("There is no window \"%1\"; open are: %2.").arg(name, names.join(QStringLiteral(", "))));
}

}  // namespace qbx::scenario
