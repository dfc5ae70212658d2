#include "offscreen/ImageExport_win.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <new>

#include "glcontext/MemorySurface_win.h"
#include "offscreen/BmpFile.h"
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
    return bitmap && GdiPlus().save(bitmap.get(), L"image/gif", fileName);
  });
}

bool writePngFile(const OffscreenSurface& surface, const wchar_t* fileName) {
  return exportTo(surface, fileName, [&](const SharedBitmap& picture) {
    return GdiPlus().save(picture.bitmap(), L"image/png", fileName);
  });
}

bool writeJpegFile(const OffscreenSurface& surface, const wchar_t* fileName, int quality) {
  return exportTo(surface, fileName, [&](const SharedBitmap& picture) {
    const GdiPlus gdiPlus;
    // Asked first, so that the last file saved is the one that was wanted.
    const bool isQualityIgnored = ignoresJpegQuality(gdiPlus);
    return gdiPlus.saveJpeg(picture.bitmap(), fileName, quality) &&
           (!isQualityIgnored || writeJpegMindingQuality(picture, fileName, quality));
  });
}

}  // namespace zyn
