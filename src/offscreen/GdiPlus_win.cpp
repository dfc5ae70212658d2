#include "offscreen/GdiPlus_win.h"

#include <bit>
#include <cstddef>
#include <cwchar>
#include <vector>

namespace zyn {
namespace {

constexpr GUID kEncoderQuality = {
    0x1D5BE4B5, 0xFA4A, 0x452D, {0x9C, 0xDD, 0x5D, 0xB3, 0x51, 0x05, 0xE7, 0xEB}};

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
           find(module, "GdipDisposeImage", disposeImage);
  }
};

const GdiPlus::Functions* GdiPlus::loadedFunctions() {
  static Functions functions{};
  static const bool areFound = functions.findAll(LoadLibraryW(L"gdiplus.dll"));
  return areFound ? &functions : nullptr;
}

GdiPlus::GdiPlus() : functions_(loadedFunctions()) {
  const Gdiplus::GdiplusStartupInput input;
  if (functions_ != nullptr && functions_->startup(&token_, &input, nullptr) != Gdiplus::Ok) {
    functions_ = nullptr;
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
  return save(image, mimeType, fileName, nullptr);
}

bool GdiPlus::saveJpeg(const Image& image, const wchar_t* fileName, int quality) const {
  LONG value = quality;
  Gdiplus::EncoderParameters parameters{};
  parameters.Count = 1;
  parameters.Parameter[0].Guid = kEncoderQuality;
  parameters.Parameter[0].Type = Gdiplus::EncoderParameterValueTypeLong;
  parameters.Parameter[0].NumberOfValues = 1;
  parameters.Parameter[0].Value = &value;
  return save(image, L"image/jpeg", fileName, &parameters);
}

bool GdiPlus::save(const Image& image, const wchar_t* mimeType, const wchar_t* fileName,
                   const Gdiplus::EncoderParameters* parameters) const {
  if (!image) return false;
  const std::optional<CLSID> encoder = findEncoder(mimeType);
  return encoder &&
         functions_->saveImage(image.get(), fileName, &*encoder, parameters) == Gdiplus::Ok;
}

}  // namespace zyn
