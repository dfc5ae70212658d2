#include "vector/PngEncoder.h"

#include <zlib.h>

#include <cstddef>
#include <span>
#include <string_view>

#include "vector/Deflate.h"

namespace zyn {

namespace {

class PngFile {
 public:
  void chunk(std::string_view name, std::span<const std::uint8_t> bytes) {
    number(static_cast<std::uint32_t>(bytes.size()));
    const std::size_t start = file.size();
    file.insert(file.end(), name.begin(), name.end());
    file.insert(file.end(), bytes.begin(), bytes.end());
    number(static_cast<std::uint32_t>(
        crc32(0, file.data() + start, static_cast<uInt>(file.size() - start))));
  }

  std::vector<std::uint8_t> file = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

 private:
  void number(std::uint32_t value) {
    for (const int shift : {24, 16, 8, 0}) {
      file.push_back(static_cast<std::uint8_t>(value >> shift));
    }
  }
};

std::uint8_t byteOf(int value, int shift) { return static_cast<std::uint8_t>(value >> shift); }

/// Rows from the top, each after a byte that says that it is as it is.
std::vector<std::uint8_t> rowsOf(const PixelImage& image) {
  const std::size_t length = 4 * static_cast<std::size_t>(image.width);
  std::vector<std::uint8_t> rows;
  rows.reserve((length + 1) * static_cast<std::size_t>(image.height));
  for (int y = image.height - 1; y >= 0; --y) {
    const auto row = std::span(image.pixels).subspan(static_cast<std::size_t>(y) * length, length);
    rows.push_back(0);
    rows.insert(rows.end(), row.begin(), row.end());
  }
  return rows;
}

}  // namespace

std::vector<std::uint8_t> encodePng(const PixelImage& image) {
  const int w = image.width;
  const int h = image.height;
  const std::uint8_t header[] = {byteOf(w, 24),
                                 byteOf(w, 16),
                                 byteOf(w, 8),
                                 byteOf(w, 0),
                                 byteOf(h, 24),
                                 byteOf(h, 16),
                                 byteOf(h, 8),
                                 byteOf(h, 0),
                                 8,
                                 6,
                                 0,
                                 0,
                                 0};
  PngFile png;
  png.chunk("IHDR", header);
  png.chunk("IDAT", deflated(rowsOf(image)));
  png.chunk("IEND", {});
  return png.file;
}

}  // namespace zyn
