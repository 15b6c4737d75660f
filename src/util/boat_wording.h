// The words of the boat edition.

#pragma once

#include <QString>

namespace qbx {

/// A text with "boat" for "vehicle" and "Boat" for "Vehicle".
[[nodiscard]] QString BoatWording(QString text);

}  // namespace qbx
