#pragma once

// Device-independent bitmaps and the files that hold them: pixels, rows, headers.

#include <array>
#include <cstddef>
#include <cstdint>

namespace zyn {

/// A colour of 8 bits a component.
struct Colour24 {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;

  bool operator==(const Colour24&) const = default;
};

/// Pixels as in a DIB section of 24 bits: rows of blue, green, red bytes, `rowBytes` apart.
struct PixelView {
  const std::uint8_t* bytes;
  int width;
  int height;
  std::int64_t rowBytes;

  const std::uint8_t* row(int y) const { return bytes + rowBytes * y; }
};

inline Colour24 colourAt(const std::uint8_t* row, int x) {
  const std::uint8_t* const pixel = row + std::ptrdiff_t{3} * x;
  return {pixel[2], pixel[1], pixel[0]};
}

/// Where the run of pixels of one colour ends that begins at pixel x of a row of `width`.
int runEnd(const std::uint8_t* row, int x, int width);

/// Copies one row of pixels, dropping the fourth byte of each: blue, green, red, x becomes blue,
/// green, red. The rows must not overlap.
void packRow(const std::uint8_t* from, std::uint8_t* to, int pixels);

/// A bitmap file of 24 bits a pixel: both headers, then the rows from the bottom, blue, green, red,
/// each row padded to four bytes.
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
