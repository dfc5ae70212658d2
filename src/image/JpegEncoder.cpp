#include "image/JpegEncoder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <new>
#include <vector>

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#include <stb_image_write.h>

namespace zyn {
namespace {

using Bytes = std::vector<std::uint8_t>;

/// Rows of a strip: those of the largest block that pixels are compressed in.
constexpr int kStripRows = 16;

enum Marker : std::uint8_t {
  kSizeMarker = 0xC0,
  kFirstRestartMarker = 0xD0,
  kRestartMarkers = 8,
  kEndMarker = 0xD9,
  kDataMarker = 0xDA,
  kRestartIntervalMarker = 0xDD,
};

void append(void* file, void* data, int size) {
  const auto* const bytes = static_cast<const std::uint8_t*>(data);
  auto& written = *static_cast<Bytes*>(file);
  written.insert(written.end(), bytes, bytes + size);
}

/// Rows of the picture, counted from the top, as a JPEG file of its own.
Bytes encodeRows(const PixelView& picture, int top, int rows, int quality) {
  // Red, green, blue from the top without padding.
  Bytes pixels;
  pixels.reserve(std::size_t{3} * static_cast<std::size_t>(picture.width) * kStripRows);
  for (int y = top; y < top + rows; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const Colour24 colour = colourAt(picture.row(picture.height - 1 - y), x);
      pixels.insert(pixels.end(), {colour.red, colour.green, colour.blue});
    }
  }
  Bytes file;
  if (stbi_write_jpg_to_func(append, &file, picture.width, rows, 3, pixels.data(),
                             std::clamp(quality, 1, 100)) == 0) {
    throw std::bad_alloc();
  }
  return file;
}

int number16(const std::uint8_t* at) { return at[0] << 8 | at[1]; }

void put16(std::uint8_t* at, int value) {
  at[0] = static_cast<std::uint8_t>(value >> 8);
  at[1] = static_cast<std::uint8_t>(value);
}

/// Where a segment of a JPEG file begins: a marker, then its length.
std::size_t placeOf(Marker marker, const Bytes& file) {
  std::size_t place = 2;
  while (file[place + 1] != marker) {
    place += 2 + static_cast<std::size_t>(number16(&file[place + 2]));
  }
  return place;
}

/// Where the compressed pixels begin.
std::size_t dataPlaceOf(const Bytes& file) {
  const std::size_t place = placeOf(kDataMarker, file);
  return place + 2 + static_cast<std::size_t>(number16(&file[place + 2]));
}

/// The blocks of a strip, told by the size and the sampling of the first component.
int blocksOf(const Bytes& file) {
  const std::uint8_t* const size = &file[placeOf(kSizeMarker, file)];
  const int width = number16(size + 7);
  const int horizontal = size[11] >> 4;
  const int vertical = size[11] & 0xF;
  const int across = (width + 8 * horizontal - 1) / (8 * horizontal);
  return across * (kStripRows / (8 * vertical));
}

/// The file begins with a JFIF segment that tells no unit.
void putResolution(Bytes& head, double dotsPerInch) {
  constexpr std::size_t kUnitPlace = 13;
  constexpr std::uint8_t kInch = 1;
  const int dots = static_cast<int>(std::lround(dotsPerInch));
  head[kUnitPlace] = kInch;
  put16(&head[kUnitPlace + 1], dots);
  put16(&head[kUnitPlace + 3], dots);
}

/// The first strip's file up to its pixels, as that of the whole picture.
Bytes headOf(const Bytes& first, int height, Resolution resolution) {
  Bytes head(first.begin(), first.begin() + static_cast<std::ptrdiff_t>(dataPlaceOf(first)));
  put16(&head[placeOf(kSizeMarker, head) + 5], height);
  if (resolution) {
    putResolution(head, *resolution);
  }
  std::uint8_t interval[] = {0xFF, kRestartIntervalMarker, 0, 4, 0, 0};
  put16(&interval[4], blocksOf(first));
  head.insert(head.begin() + static_cast<std::ptrdiff_t>(placeOf(kDataMarker, head)),
              std::begin(interval), std::end(interval));
  return head;
}

}  // namespace

// Each strip is compressed by itself. Restart markers between them tell decoders to begin afresh.
void encodeJpeg(const PixelView& picture, int quality, Resolution resolution,
                const std::function<void(std::span<const std::uint8_t>)>& write) {
  int strips = 0;
  for (int top = 0; top < picture.height; top += kStripRows, ++strips) {
    const Bytes strip =
        encodeRows(picture, top, std::min(kStripRows, picture.height - top), quality);
    if (strips == 0) {
      write(headOf(strip, picture.height, resolution));
    } else {
      const int restart = kFirstRestartMarker + (strips - 1) % kRestartMarkers;
      write(std::array{std::uint8_t{0xFF}, static_cast<std::uint8_t>(restart)});
    }
    const std::size_t begin = dataPlaceOf(strip);
    write(std::span(strip).subspan(begin, strip.size() - 2 - begin));
  }
  write(std::array<std::uint8_t, 2>{0xFF, kEndMarker});
}

}  // namespace zyn
