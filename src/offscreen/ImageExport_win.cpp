#include "offscreen/ImageExport_win.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <new>

#include "core/Dib.h"
#include "glcontext/MemorySurface_win.h"
#include "offscreen/BmpWriter_win.h"
#include "offscreen/ColourQuantiser.h"
#include "offscreen/GdiPlus_win.h"
#include "offscreen/JpegQualityWorkaround_win.h"

namespace zyn {
namespace {

/// Largest side of a GIF picture.
constexpr int kLargestGifSide = 65535;

/// Calls `write(picture)` if there are a picture and a name; deletes what a failure left behind.
template <class Write>
bool exportTo(const OffscreenSurface& surface, const wchar_t* fileName, const Write& write) {
  const SharedBitmap* const picture = surface.picture();
  if (picture == nullptr || fileName == nullptr || *fileName == L'\0') return false;
  bool isWritten = false;
  try {
    isWritten = write(*picture);
  } catch (const std::bad_alloc&) {
    isWritten = false;
  }
  if (!isWritten) DeleteFileW(fileName);
  return isWritten;
}

/// A DIB section of 8 bits a pixel with the picture in at most 256 colours; null if the memory
/// cannot be had.
UniqueBitmap indexedBitmapOf(const SharedBitmap& picture) {
  const ColourQuantiser quantiser(picture.view());
  struct {
    BITMAPINFOHEADER header;
    std::array<RGBQUAD, 256> colours;
  } info{dibInfo(picture.width(), picture.height(), 8).bmiHeader, {}};
  info.header.biClrUsed = static_cast<DWORD>(quantiser.palette().size());
  for (std::size_t i = 0; i < quantiser.palette().size(); ++i) {
    const Colour24 colour = quantiser.palette()[i];
    info.colours[i] = {colour.blue, colour.green, colour.red, 0};
  }
  void* indices = nullptr;
  UniqueBitmap bitmap(CreateDIBSection(nullptr, reinterpret_cast<const BITMAPINFO*>(&info),
                                       DIB_RGB_COLORS, &indices, nullptr, 0));
  if (bitmap) {
    quantiser.mapTo(picture.view(), static_cast<std::uint8_t*>(indices),
                    dibRowBytes(picture.width(), 8));
  }
  return bitmap;
}

/// Deletes a file at the end.
class PassingFile {
 public:
  explicit PassingFile(const wchar_t* name) : name_(name) {}
  ~PassingFile() {
    if (name_ != nullptr) DeleteFileW(name_);
  }
  PassingFile(const PassingFile&) = delete;
  PassingFile& operator=(const PassingFile&) = delete;

 private:
  const wchar_t* name_;
};

bool saveJpeg(const GdiPlus& gdiPlus, const GdiPlus::Image& image, const OffscreenSurface& surface,
              const wchar_t* fileName, int quality) {
  return exportTo(surface, fileName, [&](const SharedBitmap& picture) {
    // Asked first, so that the last file saved is the one that was wanted.
    const bool isQualityIgnored = ignoresJpegQuality(gdiPlus);
    return gdiPlus.saveJpeg(image, fileName, quality) &&
           (!isQualityIgnored || writeJpegMindingQuality(picture, fileName, quality));
  });
}

}  // namespace

bool writeBitmapFile(const OffscreenSurface& surface, const wchar_t* fileName) {
  return exportTo(surface, fileName, [&](const SharedBitmap& picture) {
    return writeBmp(picture, fileName) == BmpOutcome::kWritten;
  });
}

bool writeGifFile(const OffscreenSurface& surface, const wchar_t* fileName) {
  return exportTo(surface, fileName, [&](const SharedBitmap& picture) {
    if (std::max(picture.width(), picture.height()) > kLargestGifSide) return false;
    const UniqueBitmap bitmap = indexedBitmapOf(picture);
    const GdiPlus gdiPlus;
    return bitmap && gdiPlus.save(gdiPlus.imageOf(bitmap.get()), L"image/gif", fileName);
  });
}

bool writePngFile(const OffscreenSurface& surface, const wchar_t* fileName) {
  return exportTo(surface, fileName, [&](const SharedBitmap& picture) {
    const GdiPlus gdiPlus;
    return gdiPlus.save(gdiPlus.imageOf(picture.bitmap()), L"image/png", fileName);
  });
}

bool writeJpegFile(const OffscreenSurface& surface, const wchar_t* fileName, int quality) {
  const SharedBitmap* const picture = surface.picture();
  const GdiPlus gdiPlus;
  return picture != nullptr &&
         saveJpeg(gdiPlus, gdiPlus.imageOf(picture->bitmap()), surface, fileName, quality);
}

bool writeGifFileVia(const OffscreenSurface& surface, const wchar_t* temporary,
                     const wchar_t* fileName) {
  const PassingFile passing(temporary);
  return writeBitmapFile(surface, temporary) && writeGifFile(surface, fileName);
}

bool writePngFileVia(const OffscreenSurface& surface, const wchar_t* temporary,
                     const wchar_t* fileName) {
  const PassingFile passing(temporary);
  return writeBitmapFile(surface, temporary) &&
         exportTo(surface, fileName, [&](const SharedBitmap&) {
           const GdiPlus gdiPlus;
           return gdiPlus.save(gdiPlus.bitmapFromFile(temporary), L"image/png", fileName);
         });
}

bool writeJpegFileVia(const OffscreenSurface& surface, const wchar_t* temporary,
                      const wchar_t* fileName, int quality) {
  const PassingFile passing(temporary);
  // Whether it succeeded shows when the file is read.
  static_cast<void>(writeBitmapFile(surface, temporary));
  const GdiPlus gdiPlus;
  const GdiPlus::Image image = gdiPlus.imageFromFile(temporary);
  return image && saveJpeg(gdiPlus, image, surface, fileName, quality);
}

}  // namespace zyn
