#include "image/ImageExport_win.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "core/Dib.h"
#include "image/GdiPlus_win.h"
#include "image/GifEncoder.h"
#include "image/IndexedPicture.h"
#include "image/JpegEncoder.h"
#include "platform/Failure_win.h"
#include "platform/OutputFile_win.h"

namespace zyn {
namespace {

/// Calls `encode(file)`.
template <class Encode>
void exportTo(const wchar_t* fileName, const Encode& encode) {
  OutputFile file(fileName);
  encode(file);
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
  encodeGif(IndexedPicture(picture), [&](auto bytes) { file.write(bytes); });
}

template <class Picture>
void encodePng(const Picture& picture, OutputFile& file, Resolution resolution) {
  const GdiPlus gdiPlus;
  gdiPlus.save(gdiPlus.imageOf(picture, resolution), L"image/png", file);
}

void encodeTiff(const PixelView& picture, OutputFile& file, Resolution resolution) {
  const GdiPlus gdiPlus;
  gdiPlus.save(gdiPlus.imageOf(picture, resolution), L"image/tiff", file);
}

/// `image` is of the picture, or of what takes its place.
void encodeJpeg(const GdiPlus& gdiPlus, const GdiPlus::Image& image, const PixelView& picture,
                OutputFile& file, int quality, Resolution resolution = {}) {
  requireSides(picture, file);
  // What GDI+ refuses is not written on any system.
  gdiPlus.saveJpeg(image, file, quality);
  if (gdiPlus.ignoresJpegQuality()) {
    file.clear();
    encodeJpeg(picture, quality, resolution, [&](auto bytes) { file.write(bytes); });
  }
}

void encodeJpeg(const PixelView& picture, OutputFile& file, int quality, Resolution resolution) {
  const GdiPlus gdiPlus;
  encodeJpeg(gdiPlus, gdiPlus.imageOf(picture, resolution), picture, file, quality, resolution);
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
void exportVia(const PixelView& picture, const wchar_t* temporary, const wchar_t* fileName,
               const Encode& encode) {
  exportTo(fileName, [&](OutputFile& file) {
    const PassingFile passing(temporary, file);
    passing.write(picture);
    encode(picture, file);
  });
}

}  // namespace

void writeBitmapFile(const PixelView& picture, const wchar_t* fileName) {
  exportTo(fileName, [&](OutputFile& file) { encodeBmp(picture, file); });
}

void writeGifFile(const PixelView& picture, const wchar_t* fileName) {
  exportTo(fileName, [&](OutputFile& file) { encodeGif(picture, file); });
}

void writePngFile(const PixelView& picture, const wchar_t* fileName) {
  exportTo(fileName, [&](OutputFile& file) { encodePng(picture, file, {}); });
}

void writePngFile(const AlphaPicture& picture, const wchar_t* fileName, Resolution resolution) {
  exportTo(fileName, [&](OutputFile& file) { encodePng(picture, file, resolution); });
}

void writeJpegFile(const PixelView& picture, const wchar_t* fileName, int quality) {
  exportTo(fileName, [&](OutputFile& file) { encodeJpeg(picture, file, quality, {}); });
}

void writeGifFileVia(const PixelView& picture, const wchar_t* temporary, const wchar_t* fileName) {
  exportVia(picture, temporary, fileName,
            [](const PixelView& from, OutputFile& file) { encodeGif(from, file); });
}

void writePngFileVia(const PixelView& picture, const wchar_t* temporary, const wchar_t* fileName) {
  exportVia(picture, temporary, fileName,
            [](const PixelView& from, OutputFile& file) { encodePng(from, file, {}); });
}

void writeJpegFileVia(const PixelView& picture, const wchar_t* temporary, const wchar_t* fileName,
                      int quality) {
  exportTo(fileName, [&](OutputFile& file) {
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

void writeImageFile(ImageFormat format, const PixelView& picture, const wchar_t* fileName,
                    int quality, Resolution resolution) {
  exportTo(fileName, [&](OutputFile& file) {
    switch (format) {
      case ImageFormat::kBmp:
        return encodeBmp(picture, file);
      case ImageFormat::kJpeg:
        return encodeJpeg(picture, file, quality, resolution);
      case ImageFormat::kGif:
        return encodeGif(picture, file);
      case ImageFormat::kPng:
        return encodePng(picture, file, resolution);
      case ImageFormat::kTiff:
        return encodeTiff(picture, file, resolution);
    }
  });
}

}  // namespace zyn
