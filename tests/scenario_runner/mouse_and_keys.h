// Mouse and keyboard: clicks must reach their target, and keys go to the focus.

#pragma once

#include <QPoint>
#include <QString>
#include <Qt>

class QWidget;

namespace qbx::scenario {

struct Click {
  Qt::MouseButton button = Qt::LeftButton;
  Qt::KeyboardModifiers modifiers = Qt::NoModifier;
  bool twice = false;
};

/// Scrolls a control into view.
/// \param what  its name in messages
/// \throws ScenarioError when a person could not use it: disabled, invisible, behind a modal window
void MakeUsable(QWidget& widget, const QString& what);
/// Clicks a point of a control, in its own coordinates.
/// \throws ScenarioError as MakeUsable, and when something else covers the point
void ClickAt(QWidget& widget, QPoint point, const QString& what, const Click& click = {});

/// Types characters; "\n" is Return, "\t" is Tab.
void TypeText(QWidget& widget, const QString& text);
/// Presses "Ctrl+S", "F5", "Return".
/// \throws ScenarioError for unknown keys
void PressKeys(QWidget& widget, const QString& keys);
/// "Ctrl", "Shift", "Ctrl+Shift", empty.
[[nodiscard]] Qt::KeyboardModifiers ReadModifiers(const QString& text);
/// Runs the pending events of an action.
void Settle();

}  // namespace qbx::scenario
