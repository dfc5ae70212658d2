#include "offscreen/ImageExport_win.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "core/Dib.h"
#include "offscreen/GdiPlus_win.h"
#include "offscreen/IndexedPicture.h"
#include "offscreen/JpegEncoder.h"
#include "offscreen/OutputFile_win.h"

namespace zyn {
namespace {

/// Calls `encode(picture, file)` with the surface's picture, which must be there.
template <class Encode>
void exportTo(const OffscreenSurface& surface, const wchar_t* fileName, const Encode& encode) {
  OutputFile file(fileName);
  encode(surface.picture()->view(), file);
  file.finish();
}

void encodeBmp(const PixelView& picture, OutputFile& file) {
  file.write(bmpHeader(picture.width, picture.height));
  file.write({picture.bytes, static_cast<std::size_t>(picture.rowBytes * picture.height)});
}

/// GIF and JPEG have 16 bits for a side.
void requireSides(const PixelView& picture, const OutputFile& file) {
  if (std::max(picture.width, picture.height) > kLargestCompressedSide) {
    file.fail(E_INVALIDARG, L"This format takes at most 65535 pixels a side");
  }
}

void encodeGif(const PixelView& picture, OutputFile& file) {
  requireSides(picture, file);
  const IndexedPicture indexed(picture);
  const GdiPlus gdiPlus;
  gdiPlus.save(gdiPlus.imageOf(indexed), L"image/gif", file);
}

void encodePng(const PixelView& picture, OutputFile& file) {
  const GdiPlus gdiPlus;
  gdiPlus.save(gdiPlus.imageOf(picture), L"image/png", file);
}

/// `image` is of the picture, or of what takes its place.
void encodeJpeg(const GdiPlus& gdiPlus, const GdiPlus::Image& image, const PixelView& picture,
                OutputFile& file, int quality) {
  requireSides(picture, file);
  // What GDI+ refuses is not written on any system.
  gdiPlus.saveJpeg(image, file, quality);
  if (gdiPlus.ignoresJpegQuality()) {
    file.clear();
    encodeJpeg(picture, quality, [&](auto bytes) { file.write(bytes); });
  }
}

/// The temporary bitmap file on the way to another one. It is deleted at the end, unless it is that
/// other file: then it is not written either, since it stays as it is until the other is whole.
class PassingFile {
 public:
  PassingFile(const wchar_t* name, const OutputFile& target)
      : name_(name), isTarget_(isSameFile(name, target.name().c_str())) {}
  ~PassingFile() {
    if (name_ != nullptr && !isTarget_) {
      DeleteFileW(name_);
    }
  }
  PassingFile(const PassingFile&) = delete;
  PassingFile& operator=(const PassingFile&) = delete;

  void write(const PixelView& picture) const {
    if (isTarget_) {
      return;
    }
    OutputFile file(name_);
    encodeBmp(picture, file);
    file.finish();
  }

 private:
  const wchar_t* name_;
  bool isTarget_;
};

/// The same while the temporary file is there.
template <class Encode>
void exportVia(const OffscreenSurface& surface, const wchar_t* temporary, const wchar_t* fileName,
               const Encode& encode) {
  exportTo(surface, fileName, [&](const PixelView& picture, OutputFile& file) {
    const PassingFile passing(temporary, file);
    passing.write(picture);
    encode(picture, file);
  });
}

}  // namespace

void writeBitmapFile(const OffscreenSurface& surface, const wchar_t* fileName) {
  exportTo(surface, fileName, encodeBmp);
}

void writeGifFile(const OffscreenSurface& surface, const wchar_t* fileName) {
  exportTo(surface, fileName, encodeGif);
}

void writePngFile(const OffscreenSurface& surface, const wchar_t* fileName) {
  exportTo(surface, fileName, encodePng);
}

void writeJpegFile(const OffscreenSurface& surface, const wchar_t* fileName, int quality) {
  exportTo(surface, fileName, [&](const PixelView& picture, OutputFile& file) {
    const GdiPlus gdiPlus;
    encodeJpeg(gdiPlus, gdiPlus.imageOf(picture), picture, file, quality);
  });
}

void writeGifFileVia(const OffscreenSurface& surface, const wchar_t* temporary,
                     const wchar_t* fileName) {
  exportVia(surface, temporary, fileName, encodeGif);
}

void writePngFileVia(const OffscreenSurface& surface, const wchar_t* temporary,
                     const wchar_t* fileName) {
  exportVia(surface, temporary, fileName, encodePng);
}

void writeJpegFileVia(const OffscreenSurface& surface, const wchar_t* temporary,
                      const wchar_t* fileName, int quality) {
  exportTo(surface, fileName, [&](const PixelView& picture, OutputFile& file) {
    const PassingFile passing(temporary, file);
    const GdiPlus gdiPlus;
    GdiPlus::Image image = gdiPlus.imageOf(picture);
    try {
      passing.write(picture);
    } catch (const Failure&) {
      image = gdiPlus.imageFromFile(temporary);
      if (!image) {
        throw;
      }
    }
    encodeJpeg(gdiPlus, image, picture, file, quality);
  });
}

}  // namespace zyn
