// What a person can see of a control.

#pragma once

#include "bridge.h"

class QAbstractItemView;
class QObject;

namespace qbx::scenario {

/// \param property  as the reference of the scenarios lists them
/// \throws ScenarioError for a property that this kind of control does not have
[[nodiscard]] QVariant ReadControl(QObject& control, const QString& name, const QString& property,
                                   const Arguments& arguments);

/// The same for lists, trees and grids; an invalid QVariant when it is not theirs.
[[nodiscard]] QVariant ReadItems(QAbstractItemView& view, const QString& property, const Arguments& arguments);

}  // namespace qbx::scenario
