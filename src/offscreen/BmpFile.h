#pragma once

#include <array>
#include <cstdint>

namespace zyn {

/// Layout of a Windows bitmap file of 24 bits a pixel: both headers, then the rows from the bottom,
/// blue, green, red, each row padded to four bytes.

inline constexpr int kBmpFileHeaderBytes = 14;
inline constexpr int kBmpHeaderBytes = 54;  // both headers

/// Bytes of one row of `width` pixels of `bitsPerPixel` bits, padding included.
std::int64_t dibRowBytes(std::int64_t width, int bitsPerPixel);

/// Whether a picture of this size fits the format and the system's bitmaps: at least one pixel, and
/// at most 2^31 - 1 bytes of file.
bool isBmpSize(std::int64_t width, std::int64_t height);

/// File header and information header of a picture of that size, which must satisfy `isBmpSize`.
/// Resolution and everything else that may be unknown is 0.
std::array<std::uint8_t, kBmpHeaderBytes> bmpHeader(std::int32_t width, std::int32_t height);

}  // namespace zyn
