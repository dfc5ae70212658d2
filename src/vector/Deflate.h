#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace zyn {

/// Bytes in less room, in zlib's format, as PNG and PDF hold them.
std::vector<std::uint8_t> deflated(std::span<const std::uint8_t> bytes);

}  // namespace zyn
