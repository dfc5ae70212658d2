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

std::optional<GdiPlus::Functions> GdiPlus::functionsOf(HMODULE module) {
  Functions f{};
  if (module != nullptr && find(module, "GdiplusStartup", f.startup) &&
      find(module, "GdiplusShutdown", f.shutdown) &&
      find(module, "GdipGetImageEncodersSize", f.encodersSize) &&
      find(module, "GdipGetImageEncoders", f.encoders) &&
      find(module, "GdipCreateBitmapFromHBITMAP", f.createBitmap) &&
      find(module, "GdipSaveImageToFile", f.saveImage) &&
      find(module, "GdipDisposeImage", f.disposeImage)) {
    return f;
  }
  return std::nullopt;
}

GdiPlus::GdiPlus() : module_(LoadLibraryW(L"gdiplus.dll")), functions_(functionsOf(module_.get())) {
  const Gdiplus::GdiplusStartupInput input;
  if (functions_ && functions_->startup(&token_, &input, nullptr) != Gdiplus::Ok) {
    functions_.reset();
  }
}

GdiPlus::~GdiPlus() {
  if (functions_) functions_->shutdown(token_);
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

bool GdiPlus::save(HBITMAP bitmap, const wchar_t* mimeType, const wchar_t* fileName) const {
  return save(bitmap, mimeType, fileName, nullptr);
}

bool GdiPlus::saveJpeg(HBITMAP bitmap, const wchar_t* fileName, int quality) const {
  LONG value = quality;
  Gdiplus::EncoderParameters parameters{};
  parameters.Count = 1;
  parameters.Parameter[0].Guid = kEncoderQuality;
  parameters.Parameter[0].Type = Gdiplus::EncoderParameterValueTypeLong;
  parameters.Parameter[0].NumberOfValues = 1;
  parameters.Parameter[0].Value = &value;
  return save(bitmap, L"image/jpeg", fileName, &parameters);
}

bool GdiPlus::save(HBITMAP bitmap, const wchar_t* mimeType, const wchar_t* fileName,
                   const Gdiplus::EncoderParameters* parameters) const {
  if (!functions_) return false;
  Gdiplus::GpBitmap* image = nullptr;
  if (functions_->createBitmap(bitmap, nullptr, &image) != Gdiplus::Ok) return false;
  const std::optional<CLSID> encoder = findEncoder(mimeType);
  const bool saved =
      encoder && functions_->saveImage(image, fileName, &*encoder, parameters) == Gdiplus::Ok;
  functions_->disposeImage(image);
  return saved;
}

}  // namespace zyn
