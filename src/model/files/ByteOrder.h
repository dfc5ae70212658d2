#pragma once

#include <algorithm>
#include <bit>
#include <cstring>

namespace zyn {

/// A number as a file holds it, from bytes that need not be aligned.
template <typename Number, std::endian order>
Number loadNumber(const char* at) {
  char bytes[sizeof(Number)];
  std::memcpy(bytes, at, sizeof(Number));
  if constexpr (order != std::endian::native) {
    std::reverse(bytes, bytes + sizeof(Number));
  }
  Number value;
  std::memcpy(&value, bytes, sizeof(Number));
  return value;
}

}  // namespace zyn
