// Finding windows and controls by the product's names.

#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

class QWidget;

namespace qbx::scenario {

/// Whether it is a control of one of these kinds.
template <class... Kinds>
[[nodiscard]] bool IsOneOf(const QObject* object) {
  return (... || (qobject_cast<const Kinds*>(object) != nullptr));
}

/// A caption without the "&" of its accelerator.
[[nodiscard]] QString PlainCaption(const QString& caption);
/// A text with "\n" for every kind of line break.
[[nodiscard]] QString PlainLines(const QString& text);

/// The name of a control, or else of the control that it is a part of; empty for null.
[[nodiscard]] QString NearestName(const QWidget* widget);
/// Name of a window: its object name, its class without one.
[[nodiscard]] QString WindowName(const QWidget& window);
/// The visible windows, topmost first: the modal one, the main window, the others.
[[nodiscard]] QList<QWidget*> VisibleWindows();
/// Names of the controls and menu entries of a window, sorted.
[[nodiscard]] QStringList ControlNames(const QWidget& window);

/// Finds a control (QWidget) or menu entry (QAction) by name, first in the topmost window. "window.control" is only
/// looked for in this window. A window is found by its own name.
/// \return null when there is none
[[nodiscard]] QObject* TryFindControl(const QString& name);
/// \throws ScenarioError with the existing names
[[nodiscard]] QObject& FindControl(const QString& name);
/// \throws ScenarioError
[[nodiscard]] QWidget& FindWindow(const QString& name);

}  // namespace qbx::scenario
