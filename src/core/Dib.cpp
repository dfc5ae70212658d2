#include "core/Dib.h"

#include <bit>
#include <cstddef>
#include <cstring>
#include <limits>

namespace zyn {
namespace {

constexpr std::int64_t kLargestFile = std::numeric_limits<std::int32_t>::max();
constexpr int kBitsPerPixel = 24;
constexpr int kInfoHeaderBytes = 40;

void putLittleEndian(std::uint8_t* at, std::int64_t value, int bytes) {
  for (int i = 0; i < bytes; ++i) {
    at[i] = static_cast<std::uint8_t>(value >> (8 * i));
  }
}

}  // namespace

std::int64_t dibRowBytes(std::int64_t width, int bitsPerPixel) {
  return (width * bitsPerPixel + 31) / 32 * 4;
}

bool isBmpSize(std::int64_t width, std::int64_t height) {
  if (width < 1 || height < 1 || width > kLargestFile || height > kLargestFile) {
    return false;
  }
  return dibRowBytes(width, kBitsPerPixel) <= (kLargestFile - kBmpHeaderBytes) / height;
}

std::array<std::uint8_t, kBmpHeaderBytes> bmpHeader(std::int32_t width, std::int32_t height) {
  const std::int64_t imageBytes = dibRowBytes(width, kBitsPerPixel) * height;
  std::array<std::uint8_t, kBmpHeaderBytes> header{'B', 'M'};
  putLittleEndian(&header[2], kBmpHeaderBytes + imageBytes, 4);
  putLittleEndian(&header[10], kBmpHeaderBytes, 4);
  std::uint8_t* const info = &header[kBmpFileHeaderBytes];
  putLittleEndian(info, kInfoHeaderBytes, 4);
  putLittleEndian(info + 4, width, 4);
  putLittleEndian(info + 8, height, 4);
  putLittleEndian(info + 12, 1, 2);
  putLittleEndian(info + 14, kBitsPerPixel, 2);
  putLittleEndian(info + 20, imageBytes, 4);
  return header;
}

// Pixels are alike as long as each byte is that of three bytes before.
int runEnd(const std::uint8_t* row, int x, int width) {
  const std::ptrdiff_t last = std::ptrdiff_t{3} * (width - 1);
  std::ptrdiff_t at = std::ptrdiff_t{3} * x;
  for (; at + 8 <= last && std::memcmp(row + at, row + at + 3, 8) == 0; at += 8) {
  }
  while (at < last && row[at] == row[at + 3]) {
    ++at;
  }
  return static_cast<int>(at / 3) + 1;
}

void packRow(const std::uint8_t* from, std::uint8_t* to, int pixels) {
  static_assert(std::endian::native == std::endian::little);
  int done = 0;
  // Four pixels at a time: four words become three.
  for (; done + 4 <= pixels; done += 4, from += 16, to += 12) {
    std::uint32_t in[4];
    std::memcpy(in, from, sizeof in);
    const std::uint32_t out[3] = {(in[0] & 0xFFFFFFU) | in[1] << 24,
                                  (in[1] >> 8 & 0xFFFFU) | in[2] << 16,
                                  (in[2] >> 16 & 0xFFU) | in[3] << 8};
    std::memcpy(to, out, sizeof out);
  }
  for (; done < pixels; ++done, from += 4, to += 3) {
    std::memcpy(to, from, 3);
  }
}

}  // namespace zyn
