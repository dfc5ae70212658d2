#include "offscreen/GdiPlus_win.h"

#include <bit>
#include <cstddef>
#include <cwchar>
#include <vector>

#include "platform/MadeOnce_win.h"
#include "platform/SystemLibrary_win.h"
#include "platform/WinHandles_win.h"

namespace zyn {
namespace {

constexpr GUID kEncoderQuality = {
    0x1D5BE4B5, 0xFA4A, 0x452D, {0x9C, 0xDD, 0x5D, 0xB3, 0x51, 0x05, 0xE7, 0xEB}};

constexpr const wchar_t* kJpeg = L"image/jpeg";

/// The parameters of the JPEG encoder.
class JpegQuality {
 public:
  explicit JpegQuality(int quality) : quality_(quality) {
    parameters_.Count = 1;
    parameters_.Parameter[0] = {kEncoderQuality, 1, Gdiplus::EncoderParameterValueTypeLong,
                                &quality_};
  }
  JpegQuality(const JpegQuality&) = delete;
  JpegQuality& operator=(const JpegQuality&) = delete;

  const Gdiplus::EncoderParameters* parameters() const { return &parameters_; }

 private:
  LONG quality_;
  Gdiplus::EncoderParameters parameters_{};
};

/// Finds an exported function; false if there is none of that name.
template <class Function>
bool find(HMODULE module, const char* name, Function& function) {
  function = std::bit_cast<Function>(GetProcAddress(module, name));
  return function != nullptr;
}

}  // namespace

struct GdiPlus::Functions {
  decltype(&Gdiplus::GdiplusStartup) startup;
  decltype(&Gdiplus::GdiplusShutdown) shutdown;
  decltype(&Gdiplus::DllExports::GdipGetImageEncodersSize) encodersSize;
  decltype(&Gdiplus::DllExports::GdipGetImageEncoders) encoders;
  decltype(&Gdiplus::DllExports::GdipCreateBitmapFromHBITMAP) createBitmap;
  decltype(&Gdiplus::DllExports::GdipCreateBitmapFromFile) createBitmapFromFile;
  decltype(&Gdiplus::DllExports::GdipLoadImageFromFile) loadImage;
  decltype(&Gdiplus::DllExports::GdipSaveImageToFile) saveImage;
  decltype(&Gdiplus::DllExports::GdipSaveImageToStream) saveImageToStream;
  decltype(&Gdiplus::DllExports::GdipDisposeImage) disposeImage;

  bool findAll(HMODULE module) {
    return module != nullptr && find(module, "GdiplusStartup", startup) &&
           find(module, "GdiplusShutdown", shutdown) &&
           find(module, "GdipGetImageEncodersSize", encodersSize) &&
           find(module, "GdipGetImageEncoders", encoders) &&
           find(module, "GdipCreateBitmapFromHBITMAP", createBitmap) &&
           find(module, "GdipCreateBitmapFromFile", createBitmapFromFile) &&
           find(module, "GdipLoadImageFromFile", loadImage) &&
           find(module, "GdipSaveImageToFile", saveImage) &&
           find(module, "GdipSaveImageToStream", saveImageToStream) &&
           find(module, "GdipDisposeImage", disposeImage);
  }
};

std::shared_ptr<const GdiPlus::Functions> GdiPlus::loadedFunctions() {
  static MadeOnce<Functions> known;
  bool areFound = true;
  auto functions = known.get([&](bool& isWhole) {
    Functions found{};
    UniqueModule module(loadSystemLibrary(L"gdiplus.dll"));
    areFound = isWhole = found.findAll(module.get());
    if (areFound) static_cast<void>(module.release());  // it stays loaded
    return found;
  });
  return areFound ? functions : nullptr;
}

GdiPlus::GdiPlus() : functions_(loadedFunctions()) {
  const Gdiplus::GdiplusStartupInput input;
  if (functions_ != nullptr && functions_->startup(&token_, &input, nullptr) != Gdiplus::Ok) {
    functions_.reset();
  }
}

GdiPlus::~GdiPlus() {
  if (functions_ != nullptr) functions_->shutdown(token_);
}

std::optional<CLSID> GdiPlus::findEncoder(const wchar_t* mimeType) const {
  UINT count = 0;
  UINT bytes = 0;
  if (functions_->encodersSize(&count, &bytes) != Gdiplus::Ok || bytes == 0) return std::nullopt;
  std::vector<std::byte> buffer(bytes);
  auto* const encoders = reinterpret_cast<Gdiplus::ImageCodecInfo*>(buffer.data());
  if (functions_->encoders(count, bytes, encoders) != Gdiplus::Ok) return std::nullopt;
  for (UINT i = 0; i < count; ++i) {
    if (std::wcscmp(encoders[i].MimeType, mimeType) == 0) return encoders[i].Clsid;
  }
  return std::nullopt;
}

void GdiPlus::Disposer::operator()(Gdiplus::GpImage* image) const {
  owner->functions_->disposeImage(image);
}

template <class Create>
GdiPlus::Image GdiPlus::make(const Create& create) const {
  Image image(nullptr, Disposer{this});
  if (functions_ != nullptr) image.reset(create());
  return image;
}

GdiPlus::Image GdiPlus::imageOf(HBITMAP bitmap) const {
  return make([&] {
    Gdiplus::GpBitmap* made = nullptr;
    return functions_->createBitmap(bitmap, nullptr, &made) == Gdiplus::Ok ? made : nullptr;
  });
}

GdiPlus::Image GdiPlus::bitmapFromFile(const wchar_t* fileName) const {
  return make([&] {
    Gdiplus::GpBitmap* made = nullptr;
    return functions_->createBitmapFromFile(fileName, &made) == Gdiplus::Ok ? made : nullptr;
  });
}

GdiPlus::Image GdiPlus::imageFromFile(const wchar_t* fileName) const {
  return make([&] {
    Gdiplus::GpImage* made = nullptr;
    return functions_->loadImage(fileName, &made) == Gdiplus::Ok ? made : nullptr;
  });
}

bool GdiPlus::save(const Image& image, const wchar_t* mimeType, const wchar_t* fileName) const {
  return encode(image, mimeType, [&](Gdiplus::GpImage* source, const CLSID& encoder) {
    return functions_->saveImage(source, fileName, &encoder, nullptr);
  });
}

bool GdiPlus::saveJpeg(const Image& image, const wchar_t* fileName, int quality) const {
  return encode(image, kJpeg, [&](Gdiplus::GpImage* source, const CLSID& encoder) {
    return functions_->saveImage(source, fileName, &encoder, JpegQuality(quality).parameters());
  });
}

bool GdiPlus::saveJpeg(const Image& image, IStream* stream, int quality) const {
  return encode(image, kJpeg, [&](Gdiplus::GpImage* source, const CLSID& encoder) {
    return functions_->saveImageToStream(source, stream, &encoder,
                                         JpegQuality(quality).parameters());
  });
}

template <class Write>
bool GdiPlus::encode(const Image& image, const wchar_t* mimeType, const Write& write) const {
  if (!image) return false;
  const std::optional<CLSID> encoder = findEncoder(mimeType);
  return encoder && write(image.get(), *encoder) == Gdiplus::Ok;
}

}  // namespace zyn
