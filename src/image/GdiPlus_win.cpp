#include "image/GdiPlus_win.h"

#include <combaseapi.h>  // streams, as GDI+ takes them

#include <algorithm>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstring>
#include <cwchar>
#include <iterator>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "platform/Failure_win.h"
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

constexpr int kProbeSide = 64;

/// A picture that the qualities compress very differently.
std::vector<std::uint8_t> makeNoise() {
  std::vector<std::uint8_t> bytes(std::size_t{3} * kProbeSide * kProbeSide);
  std::uint32_t state = 1;
  for (std::uint8_t& byte : bytes) {
    state = state * 1664525U + 1013904223U;
    byte = static_cast<std::uint8_t>(state >> 24);
  }
  return bytes;
}

struct ReleaseStream {
  void operator()(IStream* stream) const { stream->Release(); }
};

using Stream = std::unique_ptr<IStream, ReleaseStream>;

/// Null where it cannot be made.
Stream makeMemoryStream() {
  IStream* made = nullptr;
  return Stream(SUCCEEDED(CreateStreamOnHGlobal(nullptr, TRUE, &made)) ? made : nullptr);
}

std::uint64_t sizeOf(IStream& stream) {
  STATSTG state{};
  return SUCCEEDED(stream.Stat(&state, STATFLAG_NONAME)) ? state.cbSize.QuadPart : 0;
}

HRESULT failureOf(Gdiplus::Status answer) {
  return answer == Gdiplus::OutOfMemory ? E_OUTOFMEMORY : E_FAIL;
}

/// A file as GDI+ writes to it. GDI+ may keep it, but not the file. It seems to take what no longer
/// goes into the file: not every encoder survives a write that fails, and the file tells.
class FileStream final : public IStream {
 public:
  static std::unique_ptr<FileStream, ReleaseStream> make(OutputFile& file) {
    return std::unique_ptr<FileStream, ReleaseStream>(new FileStream(file));
  }
  /// From here on nothing is written any more.
  void leaveFile() { file_ = nullptr; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) noexcept override {
    const bool isKnown =
        iid == __uuidof(IUnknown) || iid == __uuidof(ISequentialStream) || iid == __uuidof(IStream);
    *object = isKnown ? this : nullptr;
    if (isKnown) {
      AddRef();
    }
    return isKnown ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() noexcept override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() noexcept override {
    const ULONG left = --references_;
    if (left == 0) {
      delete this;
    }
    return left;
  }

  STDMETHODIMP Write(const void* bytes, ULONG count, ULONG* written) noexcept override {
    if (written != nullptr) {
      *written = count;
    }
    tryOn([&](OutputFile& file) { file.write({static_cast<const std::uint8_t*>(bytes), count}); });
    place_ += count;
    size_ = std::max(size_, place_);
    return S_OK;
  }
  STDMETHODIMP Seek(LARGE_INTEGER distance, DWORD from, ULARGE_INTEGER* place) noexcept override {
    const std::int64_t origins[] = {0, place_, size_};
    if (from >= std::size(origins) || origins[from] + distance.QuadPart < 0) {
      return STG_E_INVALIDFUNCTION;
    }
    place_ = origins[from] + distance.QuadPart;
    tryOn([&](OutputFile& file) { file.seek(place_, FILE_BEGIN); });
    if (place != nullptr) {
      place->QuadPart = static_cast<std::uint64_t>(place_);
    }
    return S_OK;
  }
  STDMETHODIMP Stat(STATSTG* state, DWORD flags) noexcept override {
    *state = {};
    state->type = STGTY_STREAM;
    state->grfMode = STGM_WRITE;
    state->cbSize.QuadPart = static_cast<std::uint64_t>(size_);
    tryOn([&](OutputFile& file) {
      if (flags != STATFLAG_NONAME) {
        state->pwcsName = copyForCaller(file.name());
      }
    });
    return S_OK;
  }
  STDMETHODIMP Commit(DWORD) noexcept override { return S_OK; }

  STDMETHODIMP Read(void*, ULONG, ULONG*) noexcept override { return STG_E_ACCESSDENIED; }
  STDMETHODIMP SetSize(ULARGE_INTEGER) noexcept override { return E_NOTIMPL; }
  STDMETHODIMP CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*,
                      ULARGE_INTEGER*) noexcept override {
    return E_NOTIMPL;
  }
  STDMETHODIMP Revert() noexcept override { return E_NOTIMPL; }
  STDMETHODIMP LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) noexcept override {
    return STG_E_INVALIDFUNCTION;
  }
  STDMETHODIMP UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) noexcept override {
    return STG_E_INVALIDFUNCTION;
  }
  STDMETHODIMP Clone(IStream**) noexcept override { return E_NOTIMPL; }

 private:
  explicit FileStream(OutputFile& file) : file_(&file) {}
  ~FileStream() = default;

  static LPOLESTR copyForCaller(const std::wstring& text) {
    const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
    auto* const copy = static_cast<LPOLESTR>(CoTaskMemAlloc(bytes));
    if (copy != nullptr) {
      std::memcpy(copy, text.c_str(), bytes);
    }
    return copy;
  }

  /// The file keeps its first failure.
  template <class Work>
  void tryOn(const Work& work) noexcept {
    try {
      if (file_ != nullptr) {
        work(*file_);
      }
    } catch (...) {
      leaveFile();
    }
  }

  OutputFile* file_;  ///< null once nothing is to be written any more
  std::int64_t place_ = 0;
  std::int64_t size_ = 0;
  std::atomic<ULONG> references_ = 1;
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
  decltype(&Gdiplus::DllExports::GdipCreateBitmapFromScan0) createBitmap;
  decltype(&Gdiplus::DllExports::GdipBitmapSetResolution) setResolution;
  decltype(&Gdiplus::DllExports::GdipLoadImageFromFile) loadImage;
  decltype(&Gdiplus::DllExports::GdipSaveImageToStream) saveImage;
  decltype(&Gdiplus::DllExports::GdipDisposeImage) disposeImage;

  bool findAll(HMODULE module) {
    return module != nullptr && find(module, "GdiplusStartup", startup) &&
           find(module, "GdiplusShutdown", shutdown) &&
           find(module, "GdipGetImageEncodersSize", encodersSize) &&
           find(module, "GdipGetImageEncoders", encoders) &&
           find(module, "GdipCreateBitmapFromScan0", createBitmap) &&
           find(module, "GdipBitmapSetResolution", setResolution) &&
           find(module, "GdipLoadImageFromFile", loadImage) &&
           find(module, "GdipSaveImageToStream", saveImage) &&
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
    if (areFound) {
      static_cast<void>(module.release());  // it stays loaded
    }
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
  if (functions_ != nullptr) {
    functions_->shutdown(token_);
  }
}

std::optional<CLSID> GdiPlus::findEncoder(const wchar_t* mimeType) const {
  UINT count = 0;
  UINT bytes = 0;
  if (functions_->encodersSize(&count, &bytes) != Gdiplus::Ok || bytes == 0) {
    return std::nullopt;
  }
  std::vector<std::byte> buffer(bytes);
  auto* const encoders = reinterpret_cast<Gdiplus::ImageCodecInfo*>(buffer.data());
  if (functions_->encoders(count, bytes, encoders) != Gdiplus::Ok) {
    return std::nullopt;
  }
  for (UINT i = 0; i < count; ++i) {
    if (std::wcscmp(encoders[i].MimeType, mimeType) == 0) {
      return encoders[i].Clsid;
    }
  }
  return std::nullopt;
}

void GdiPlus::Disposer::operator()(Gdiplus::GpImage* image) const {
  owner->functions_->disposeImage(image);
}

template <class Create>
GdiPlus::Image GdiPlus::make(const Create& create) const {
  Image image(nullptr, Disposer{this});
  if (functions_ != nullptr) {
    image.reset(create());
  }
  return image;
}

GdiPlus::Image GdiPlus::withResolution(Image image, Resolution resolution) const {
  if (image && resolution) {
    const auto dots = static_cast<Gdiplus::REAL>(*resolution);
    auto* const bitmap = static_cast<Gdiplus::GpBitmap*>(image.get());
    if (functions_->setResolution(bitmap, dots, dots) != Gdiplus::Ok) {
      image.reset();
    }
  }
  return image;
}

// GDI+ counts rows from the top, those of a picture lie from the bottom.
GdiPlus::Image GdiPlus::imageOf(const PixelView& picture, Resolution resolution) const {
  Image image = make([&] {
    Gdiplus::GpBitmap* made = nullptr;
    functions_->createBitmap(picture.width, picture.height, -static_cast<INT>(picture.rowBytes),
                             PixelFormat24bppRGB,
                             const_cast<BYTE*>(picture.row(picture.height - 1)), &made);
    return made;
  });
  return withResolution(std::move(image), resolution);
}

GdiPlus::Image GdiPlus::imageOf(const AlphaPicture& picture, Resolution resolution) const {
  Image image = make([&] {
    Gdiplus::GpBitmap* made = nullptr;
    functions_->createBitmap(picture.width(), picture.height(),
                             -static_cast<INT>(picture.rowBytes()), PixelFormat32bppARGB,
                             const_cast<BYTE*>(picture.row(picture.height() - 1)), &made);
    return made;
  });
  return withResolution(std::move(image), resolution);
}

GdiPlus::Image GdiPlus::imageFromFile(const wchar_t* fileName) const {
  return make([&] {
    Gdiplus::GpImage* made = nullptr;
    functions_->loadImage(fileName, &made);
    return made;
  });
}

void GdiPlus::save(const Image& image, const wchar_t* mimeType, OutputFile& file) const {
  save(image, mimeType, file, nullptr);
}

void GdiPlus::saveJpeg(const Image& image, OutputFile& file, int quality) const {
  save(image, kJpeg, file, JpegQuality(quality).parameters());
}

void GdiPlus::save(const Image& image, const wchar_t* mimeType, OutputFile& file,
                   const Gdiplus::EncoderParameters* parameters) const {
  if (!image) {
    file.fail(E_FAIL, L"GDI+ could not take the picture");
  }
  const auto stream = FileStream::make(file);
  const Gdiplus::Status answer = encode(image, mimeType, stream.get(), parameters);
  stream->leaveFile();
  file.requireWhole();
  if (answer != Gdiplus::Ok) {
    file.fail(failureOf(answer), L"GDI+ answers " + std::to_wstring(answer));
  }
}

Gdiplus::Status GdiPlus::encode(const Image& image, const wchar_t* mimeType, IStream* stream,
                                const Gdiplus::EncoderParameters* parameters) const {
  if (functions_ == nullptr) {
    return Gdiplus::GdiplusNotInitialized;
  }
  if (!image) {
    return Gdiplus::OutOfMemory;
  }
  const std::optional<CLSID> encoder = findEncoder(mimeType);
  if (!encoder) {
    return Gdiplus::UnknownImageFormat;
  }
  return functions_->saveImage(image.get(), stream, &*encoder, parameters);
}

bool GdiPlus::ignoresJpegQuality() const {
  static MadeOnce<bool> ignored;
  return *ignored.get([this](bool& isFound) { return givesOneSize(isFound); });
}

/// Where the pictures cannot be made, `isFound` becomes false.
bool GdiPlus::givesOneSize(bool& isFound) const {
  const std::vector<std::uint8_t> noise = makeNoise();
  const PixelView picture{noise.data(), kProbeSide, kProbeSide, 3 * kProbeSide};
  const std::uint64_t low = jpegSize(picture, 10);
  const std::uint64_t high = jpegSize(picture, 90);
  isFound = low != 0 && high != 0;
  return isFound && low == high;
}

/// Bytes of the picture as a JPEG file, made in memory; 0 if it cannot be made.
std::uint64_t GdiPlus::jpegSize(const PixelView& picture, int quality) const {
  const Stream stream = makeMemoryStream();
  const bool isMade = stream && encode(imageOf(picture), kJpeg, stream.get(),
                                       JpegQuality(quality).parameters()) == Gdiplus::Ok;
  return isMade ? sizeOf(*stream) : 0;
}

std::vector<std::uint8_t> GdiPlus::encoded(const Image& image, const wchar_t* mimeType) const {
  const Stream stream = makeMemoryStream();
  const Gdiplus::Status answer =
      stream ? encode(image, mimeType, stream.get(), nullptr) : Gdiplus::OutOfMemory;
  if (answer != Gdiplus::Ok) {
    throw Failure(failureOf(answer),
                  L"GDI+ could not encode the picture: it answers " + std::to_wstring(answer));
  }
  std::vector<std::uint8_t> bytes(sizeOf(*stream));
  const LARGE_INTEGER start{};
  ULONG count = 0;
  stream->Seek(start, STREAM_SEEK_SET, nullptr);
  stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &count);
  bytes.resize(count);
  return bytes;
}

}  // namespace zyn
