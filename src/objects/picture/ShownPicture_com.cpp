#include "objects/picture/ShownPicture_com.h"

#include <optional>
#include <utility>

#include "objects/picture/PictureImage_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

/// For a picture object that changes this one each time it is rendered.
constexpr int kMostConversions = 8;

std::uint8_t lowByte(LONG value) { return static_cast<std::uint8_t>(value & 0xFF); }

}  // namespace

ShownPicture& ShownPicture::operator=(const ShownPicture& other) {
  source_ = other.source_;
  key_ = other.key_;
  transparent_ = other.transparent_;
  image_ = other.image_;
  return *this;
}

void ShownPicture::setSource(IDispatch* source) {
  // The old picture is let go only when this object is whole again: that may run foreign code.
  const ComPtr<IDispatch> old = std::exchange(source_, ComPtr<IDispatch>(source));
  convert();
}

void ShownPicture::setKey(LONG r, LONG g, LONG b) {
  key_ = {lowByte(r), lowByte(g), lowByte(b)};
  convert();
}

void ShownPicture::setTransparent(bool transparent) {
  transparent_ = transparent;
  convert();
}

/// Rendering runs foreign code, which may change this object: the change that comes last counts.
void ShownPicture::convert() {
  ++changes_;
  image_.reset();
  const RunningScope::Guard converting(converting_);
  if (converting.isNested()) {
    return;
  }
  for (int i = 0; i < kMostConversions; ++i) {
    const unsigned change = changes_;
    const ComPtr<IDispatch> source = source_;
    PixelImage image =
        readPictureImage(source.Get(), transparent_ ? std::optional(key_) : std::nullopt);
    if (change == changes_) {
      if (!image.isEmpty()) {
        image_ = std::make_shared<const PixelImage>(std::move(image));
      }
      return;
    }
  }
}

}  // namespace zyn
