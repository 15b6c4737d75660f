// Storing a database value in a member of a struct of options.

#pragma once

#include <algorithm>
#include <limits>
#include <variant>

#include "database/value.h"

namespace qbx {

/// Converts without failing; a number beyond 32 bits becomes the nearest one that fits.
template <typename Struct>
void AssignMember(Struct& target, const std::variant<bool Struct::*, int Struct::*, QString Struct::*>& member,
                  const Value& value) {
  if (const auto* flag = std::get_if<bool Struct::*>(&member)) {
    target.** flag = value.ToBool();
  } else if (const auto* number = std::get_if<int Struct::*>(&member)) {
    target.** number = static_cast<int>(
        std::clamp<qint64>(value.ToInt(), std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
  } else {
    target.*std::get<QString Struct::*>(member) = value.ToText();
  }
}

}  // namespace qbx
