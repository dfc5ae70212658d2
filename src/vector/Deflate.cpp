#include "vector/Deflate.h"

#include <zlib.h>

#include <limits>
#include <new>
#include <stdexcept>

namespace zyn {

namespace {

/// Higher levels take thrice the time for a tenth less.
constexpr int kLevel = 3;

}  // namespace

std::vector<std::uint8_t> deflated(std::span<const std::uint8_t> bytes) {
  if (bytes.size() > std::numeric_limits<uLong>::max() / 2) {
    throw std::length_error("More than can be compressed at once");
  }
  uLongf size = compressBound(static_cast<uLong>(bytes.size()));
  std::vector<std::uint8_t> result(size);
  // It fails for want of memory alone.
  if (compress2(result.data(), &size, bytes.data(), static_cast<uLong>(bytes.size()), kLevel) !=
      Z_OK) {
    throw std::bad_alloc();
  }
  result.resize(size);
  return result;
}

}  // namespace zyn
