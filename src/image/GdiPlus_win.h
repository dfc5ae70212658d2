#pragma once

#include <windows.h>

// gdiplus.h needs PROPID.
#include <wtypes.h>

#include <gdiplus.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "core/Dib.h"
#include "image/AlphaPicture.h"
#include "image/ImageFormat.h"
#include "platform/OutputFile_win.h"

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

  /// Of pixels that stay where they are, and stay the caller's.
  Image imageOf(const PixelView& picture, Resolution resolution = {}) const;
  Image imageOf(const AlphaPicture& picture, Resolution resolution = {}) const;
  /// Of a file with any image. The file stays open as long as the image.
  Image imageFromFile(const wchar_t* fileName) const;

  /// Writes an image to the file with the encoder of that MIME type.
  void save(const Image& image, const wchar_t* mimeType, OutputFile& file) const;

  /// The same as JPEG, handing `quality` to the encoder as it is.
  void saveJpeg(const Image& image, OutputFile& file, int quality) const;

  /// The bytes of a file with the image; throws where it cannot be made.
  std::vector<std::uint8_t> encoded(const Image& image, const wchar_t* mimeType) const;

  /// Whether this system's encoder takes no notice of the quality of a JPEG file, as Wine's does:
  /// found out once per process by making a small picture in memory in two qualities.
  bool ignoresJpegQuality() const;

 private:
  template <class Create>
  Image make(const Create& create) const;
  Image withResolution(Image image, Resolution resolution) const;
  Gdiplus::Status encode(const Image& image, const wchar_t* mimeType, IStream* stream,
                         const Gdiplus::EncoderParameters* parameters) const;
  void save(const Image& image, const wchar_t* mimeType, OutputFile& file,
            const Gdiplus::EncoderParameters* parameters) const;
  bool givesOneSize(bool& isFound) const;
  std::uint64_t jpegSize(const PixelView& picture, int quality) const;

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
