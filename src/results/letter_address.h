// Whether a letter can be delivered to an address.

#pragma once

#include <QString>

namespace qbx {

enum class AddressFault {
  kNone,
  kEmpty,
  kNoPostcode,  ///< no part of it looks like a postcode
};

/// \param address  lines separated by CR
[[nodiscard]] AddressFault FaultOfAddress(const QString& address);

}  // namespace qbx
