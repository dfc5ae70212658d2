#pragma once

#include <cstdint>
#include <vector>

#include "support/Image.h"

namespace zyn::test {

using Bytes = std::vector<std::uint8_t>;

/// A Windows bitmap file taken apart field by field.
struct BmpFile {
  char type[2];
  std::uint32_t size;
  std::uint16_t reserved1;
  std::uint16_t reserved2;
  std::uint32_t offBits;
  std::uint32_t headerSize;
  std::int32_t width;
  std::int32_t height;
  std::uint16_t planes;
  std::uint16_t bitCount;
  std::uint32_t compression;
  std::uint32_t sizeImage;
  std::int32_t xPelsPerMeter;
  std::int32_t yPelsPerMeter;
  std::uint32_t clrUsed;
  std::uint32_t clrImportant;
};

/// Throws when the bytes are too few for the two headers.
BmpFile parseBmp(const Bytes& bytes);

/// The pixels of an uncompressed bottom-up file of 24 bits; throws for any other, or a short one.
Image decodeBmp(const Bytes& bytes);

}  // namespace zyn::test
