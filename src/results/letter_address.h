// Whether a letter can arrive at an address.

#pragma once

#include <QString>

namespace qbx {

enum class AddressFault {
  kNone,
  kEmpty,
  kNoPostcode,  ///< nothing in it looks like one
};

/// \param address  lines separated by CR
[[nodiscard]] AddressFault FaultOfAddress(const QString& address);

}  // namespace qbx
