// What a person can do to a control.

#pragma once

#include "bridge.h"

class QAbstractItemView;
class QObject;

namespace qbx::scenario {

/// \param action  as the reference of the scenarios lists them
/// \throws ScenarioError for an action that this kind of control does not take, or that a person could not do now
void UseControl(QObject& control, const QString& name, const QString& action, const Arguments& arguments);

/// The same for lists, trees and grids. \return false when the action is not theirs
[[nodiscard]] bool UseItems(QAbstractItemView& view, const QString& name, const QString& action,
                            const Arguments& arguments);

}  // namespace qbx::scenario
