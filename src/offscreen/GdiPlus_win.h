#pragma once

#include <windows.h>

// gdiplus.h needs PROPID.
#include <wtypes.h>

#include <gdiplus.h>

#include <optional>

#include "glcontext/WinHandles_win.h"

namespace zyn {

/// GDI+, loaded and started for as long as this object lives. It is loaded by name rather than
/// imported, so that a process that never writes a compressed picture never loads it.
class GdiPlus {
 public:
  GdiPlus();
  ~GdiPlus();
  GdiPlus(const GdiPlus&) = delete;
  GdiPlus& operator=(const GdiPlus&) = delete;

  /// Writes a bitmap to a file with the encoder of that MIME type and tells whether it succeeded.
  /// `bitmap` is selected into no device context.
  bool save(HBITMAP bitmap, const wchar_t* mimeType, const wchar_t* fileName) const;

  /// The same as JPEG, handing `quality` to the encoder as it is.
  bool saveJpeg(HBITMAP bitmap, const wchar_t* fileName, int quality) const;

 private:
  bool save(HBITMAP bitmap, const wchar_t* mimeType, const wchar_t* fileName,
            const Gdiplus::EncoderParameters* parameters) const;

  /// Class identifier of the first encoder whose MIME type is exactly this one.
  std::optional<CLSID> findEncoder(const wchar_t* mimeType) const;

  struct Functions {
    decltype(&Gdiplus::GdiplusStartup) startup;
    decltype(&Gdiplus::GdiplusShutdown) shutdown;
    decltype(&Gdiplus::DllExports::GdipGetImageEncodersSize) encodersSize;
    decltype(&Gdiplus::DllExports::GdipGetImageEncoders) encoders;
    decltype(&Gdiplus::DllExports::GdipCreateBitmapFromHBITMAP) createBitmap;
    decltype(&Gdiplus::DllExports::GdipSaveImageToFile) saveImage;
    decltype(&Gdiplus::DllExports::GdipDisposeImage) disposeImage;
  };
  static std::optional<Functions> functionsOf(HMODULE module);

  UniqueModule module_;
  std::optional<Functions> functions_;  // none: not loaded or not started
  ULONG_PTR token_ = 0;
};

}  // namespace zyn
