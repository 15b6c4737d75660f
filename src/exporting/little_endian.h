// Numbers as bytes, the lowest byte first.

#pragma once

#include <bit>
#include <cstring>
#include <string>

namespace qbx {

static_assert(std::endian::native == std::endian::little);

template <typename Number>
void AppendNumber(std::string& bytes, Number number) {
  char raw[sizeof number];
  std::memcpy(raw, &number, sizeof number);
  bytes.append(raw, sizeof number);
}

}  // namespace qbx
