#include "objects/picture/PictureImage_com.h"

#include <olectl.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <utility>

#include "com/askFor_com.h"
#include "glcontext/MemorySurface_win.h"

namespace zyn {

namespace {

constexpr int kBitsPerPixel = 32;
constexpr int kHimetricPerInch = 2540;
/// Beyond these no scene needs a picture, and the memory for it would be missed elsewhere.
constexpr int kLargestSide = 16384;
constexpr std::int64_t kMostPixels = 1 << 25;

constexpr int kOpaque = 255;

struct PictureSize {
  OLE_XSIZE_HIMETRIC himetricWidth = 0;
  OLE_YSIZE_HIMETRIC himetricHeight = 0;
  int width = 0;  ///< pixels
  int height = 0;

  bool isDrawable() const {
    return width > 0 && height > 0 && width <= kLargestSide && height <= kLargestSide &&
           std::int64_t{width} * height <= kMostPixels;
  }
};

PictureSize sizeOf(IPicture& picture) {
  PictureSize size;
  if (FAILED(picture.get_Width(&size.himetricWidth)) ||
      FAILED(picture.get_Height(&size.himetricHeight))) {
    return {};
  }
  const UniqueWindowDC screen(GetDC(nullptr));
  size.width =
      MulDiv(size.himetricWidth, GetDeviceCaps(screen.get(), LOGPIXELSX), kHimetricPerInch);
  size.height =
      MulDiv(size.himetricHeight, GetDeviceCaps(screen.get(), LOGPIXELSY), kHimetricPerInch);
  return size;
}

enum class Background { kBlack, kWhite };

/// A pixel as a DIB section holds it.
struct DibPixel {
  std::uint8_t b;
  std::uint8_t g;
  std::uint8_t r;
  std::uint8_t a;
};

/// A picture drawn by itself on a background, rows from the top down; the fourth bytes are 0 where
/// it writes none.
class Rendering {
 public:
  static std::optional<Rendering> make(IPicture& picture, const PictureSize& size,
                                       Background background) {
    auto surface = MemorySurface::make(size.width, -size.height, kBitsPerPixel);
    if (!surface) {
      return std::nullopt;
    }
    if (background == Background::kWhite) {
      PatBlt(surface->dc(), 0, 0, size.width, size.height, WHITENESS);
    }
    // A picture counts its rows upwards from its lower edge.
    const RECT bounds = {0, 0, size.width, size.height};
    const HRESULT answer =
        picture.Render(surface->dc(), 0, 0, size.width, size.height, 0, size.himetricHeight,
                       size.himetricWidth, -size.himetricHeight, &bounds);
    GdiFlush();
    if (FAILED(answer)) {
      return std::nullopt;
    }
    return Rendering(std::move(*surface), size);
  }

  std::span<const DibPixel> pixels() const {
    return {static_cast<const DibPixel*>(surface_.pixels()), width_ * height_};
  }
  /// Counted from the bottom up.
  std::span<const DibPixel> row(std::size_t y) const {
    return pixels().subspan((height_ - 1 - y) * width_, width_);
  }

 private:
  Rendering(MemorySurface surface, const PictureSize& size)
      : surface_(std::move(surface)),
        width_(static_cast<std::size_t>(size.width)),
        height_(static_cast<std::size_t>(size.height)) {}

  MemorySurface surface_;
  std::size_t width_;
  std::size_t height_;
};

using Rgba = std::array<std::uint8_t, 4>;

/// Converts pixel by pixel: `convert` takes one pixel of each rendering.
template <class Convert, class... Renderings>
PixelImage convertImage(const PictureSize& size, Convert convert, const Renderings&... renderings) {
  PixelImage image{size.width, size.height, {}};
  const auto width = static_cast<std::size_t>(size.width);
  const auto height = static_cast<std::size_t>(size.height);
  image.pixels.resize(width * height * sizeof(Rgba));
  auto target = image.pixels.begin();
  for (std::size_t y = 0; y < height; ++y) {
    for (std::size_t x = 0; x < width; ++x) {
      const Rgba pixel = convert(renderings.row(y)[x]...);
      target = std::copy(pixel.begin(), pixel.end(), target);
    }
  }
  return image;
}

Rgba withKey(const DibPixel& pixel, const ColourKey& key) {
  const bool isKey = pixel.r == key.r && pixel.g == key.g && pixel.b == key.b;
  return {pixel.r, pixel.g, pixel.b, static_cast<std::uint8_t>(isKey ? 0 : kOpaque)};
}

/// The colour, by itself, of what gives one colour over black and another over white, and how much
/// it covers.
Rgba withCoverage(const DibPixel& overBlack, const DibPixel& overWhite) {
  const int shining =
      std::min({overWhite.r - overBlack.r, overWhite.g - overBlack.g, overWhite.b - overBlack.b});
  const int coverage = std::clamp(kOpaque - shining, 0, kOpaque);
  const auto byItself = [&](int part) {
    return static_cast<std::uint8_t>(
        std::min(coverage > 0 ? part * kOpaque / coverage : part, kOpaque));
  };
  return {byItself(overBlack.r), byItself(overBlack.g), byItself(overBlack.b),
          static_cast<std::uint8_t>(coverage)};
}

/// Pictures may bring an alpha of their own, and many leave it 0 throughout; what GDI leaves in the
/// fourth bytes as it plays a metafile means nothing.
bool hasOwnAlpha(IPicture& picture, const Rendering& rendering) {
  SHORT type = PICTYPE_UNINITIALIZED;
  const bool isMetafile = SUCCEEDED(picture.get_Type(&type)) &&
                          (type == PICTYPE_METAFILE || type == PICTYPE_ENHMETAFILE);
  if (isMetafile) {
    return false;
  }
  const auto pixels = rendering.pixels();
  return std::any_of(pixels.begin(), pixels.end(),
                     [](const DibPixel& pixel) { return pixel.a != 0; });
}

PixelImage readPicture(IPicture& picture, const std::optional<ColourKey>& key) {
  const PictureSize size = sizeOf(picture);
  if (!size.isDrawable()) {
    return {};
  }
  const auto rendering = Rendering::make(picture, size, Background::kBlack);
  if (!rendering) {
    return {};
  }
  if (key) {
    return convertImage(
        size, [&](const DibPixel& pixel) { return withKey(pixel, *key); }, *rendering);
  }
  // GDI writes no alpha where it draws: what differs with the background was left unpainted.
  const auto onWhite = Rendering::make(picture, size, Background::kWhite);
  if (!onWhite) {
    return {};
  }
  const bool ownAlpha = hasOwnAlpha(picture, *rendering);
  return convertImage(
      size,
      [&](const DibPixel& overBlack, const DibPixel& overWhite) {
        Rgba pixel = withCoverage(overBlack, overWhite);
        if (ownAlpha) {
          pixel[3] = std::min(pixel[3], overBlack.a);
        }
        return pixel;
      },
      *rendering, *onWhite);
}

}  // namespace

PixelImage readPictureImage(IUnknown* object, const std::optional<ColourKey>& key) {
  const auto picture = askFor<IPicture>(object);
  return picture ? readPicture(*picture.Get(), key) : PixelImage();
}

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
