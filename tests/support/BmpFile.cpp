#include "support/BmpFile.h"

#include <bit>
#include <cstring>
#include <stdexcept>

namespace zyn::test {
namespace {

static_assert(std::endian::native == std::endian::little);

constexpr size_t kHeadersSize = 54;

class Reader {
 public:
  explicit Reader(const Bytes& bytes) : bytes_(bytes) {}
  template <class Value>
  void read(Value& value) {
    std::memcpy(&value, bytes_.data() + position_, sizeof value);
    position_ += sizeof value;
  }

 private:
  const Bytes& bytes_;
  size_t position_ = 0;
};

}  // namespace

BmpFile parseBmp(const Bytes& bytes) {
  if (bytes.size() < kHeadersSize) throw std::runtime_error("bitmap file without headers");
  BmpFile file = {};
  Reader reader(bytes);
  reader.read(file.type);
  reader.read(file.size);
  reader.read(file.reserved1);
  reader.read(file.reserved2);
  reader.read(file.offBits);
  reader.read(file.headerSize);
  reader.read(file.width);
  reader.read(file.height);
  reader.read(file.planes);
  reader.read(file.bitCount);
  reader.read(file.compression);
  reader.read(file.sizeImage);
  reader.read(file.xPelsPerMeter);
  reader.read(file.yPelsPerMeter);
  reader.read(file.clrUsed);
  reader.read(file.clrImportant);
  return file;
}

Image decodeBmp(const Bytes& bytes) {
  const BmpFile file = parseBmp(bytes);
  if (file.bitCount != 24 || file.compression != 0 || file.width <= 0 || file.height <= 0) {
    throw std::runtime_error("not an uncompressed bottom-up bitmap of 24 bits");
  }
  const size_t stride = (static_cast<size_t>(file.width) * 3 + 3) / 4 * 4;
  if (bytes.size() < file.offBits + stride * static_cast<size_t>(file.height)) {
    throw std::runtime_error("bitmap file too short");
  }
  Image image(file.width, file.height);
  for (int y = 0; y < file.height; ++y) {
    const std::uint8_t* row =
        bytes.data() + file.offBits + stride * static_cast<size_t>(file.height - 1 - y);
    for (int x = 0; x < file.width; ++x, row += 3) image.at(x, y) = {row[2], row[1], row[0]};
  }
  return image;
}

}  // namespace zyn::test
