#pragma once

#include <windows.h>

// gdiplus.h needs PROPID.
#include <wtypes.h>

#include <gdiplus.h>

#include <memory>
#include <optional>

namespace zyn {

/// GDI+, started for as long as this object lives. The library is loaded when it is first wanted
/// rather than imported, so that a process that writes no compressed picture never loads it; it
/// then stays loaded.
class GdiPlus {
 public:
  GdiPlus();
  ~GdiPlus();
  GdiPlus(const GdiPlus&) = delete;
  GdiPlus& operator=(const GdiPlus&) = delete;

  struct Disposer {
    const GdiPlus* owner;
    void operator()(Gdiplus::GpImage* image) const;
  };
  /// An image of GDI+, to be let go before it ends; null where it could not be made.
  using Image = std::unique_ptr<Gdiplus::GpImage, Disposer>;

  /// Of a bitmap that is selected into no device context.
  Image imageOf(HBITMAP bitmap) const;
  /// Of a file that is to be read as a bitmap. The file stays open as long as the image.
  Image bitmapFromFile(const wchar_t* fileName) const;
  /// Of a file with any image. The file stays open as long as the image.
  Image imageFromFile(const wchar_t* fileName) const;

  /// Writes an image to a file with the encoder of that MIME type and tells whether it succeeded.
  bool save(const Image& image, const wchar_t* mimeType, const wchar_t* fileName) const;

  /// The same as JPEG, handing `quality` to the encoder as it is.
  bool saveJpeg(const Image& image, const wchar_t* fileName, int quality) const;
  bool saveJpeg(const Image& image, IStream* stream, int quality) const;

 private:
  /// Calls `write(image, encoder)` if there are both, and tells whether it answered Ok.
  template <class Write>
  bool encode(const Image& image, const wchar_t* mimeType, const Write& write) const;
  template <class Create>
  Image make(const Create& create) const;

  /// Class identifier of the first encoder whose MIME type is exactly this one.
  std::optional<CLSID> findEncoder(const wchar_t* mimeType) const;

  struct Functions;
  /// The functions of the library; null if it or one of them is missing. Asked for again, it tries
  /// again.
  static std::shared_ptr<const Functions> loadedFunctions();

  std::shared_ptr<const Functions> functions_;  // null: not loaded or not started
  ULONG_PTR token_ = 0;
};

}  // namespace zyn
