// A stand-in for gdiplus.dll: it passes every call on to the system's own and appends what files
// are loaded and what is given to GdipSaveImageToStream to the file named by the environment
// variable ZYN_GDIPLUS_RECORD.

#include <windows.h>
// After windows.h:
#include <objidl.h>

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <type_traits>

namespace {

using Status = int;
constexpr Status kGenericError = 1;
constexpr ULONG kTypeLong = 4;

struct EncoderParameter {
  GUID guid;
  ULONG numberOfValues;
  ULONG type;
  const void* value;
};

struct EncoderParameters {
  UINT count;
  EncoderParameter parameter[1];
};

HMODULE systemGdiPlus() {
  static const HMODULE module = [] {
    std::array<wchar_t, MAX_PATH> folder{};
    GetSystemDirectoryW(folder.data(), static_cast<UINT>(folder.size()));
    return LoadLibraryW((std::wstring(folder.data()) + L"\\gdiplus.dll").c_str());
  }();
  return module;
}

/// Calls the system's function of that name.
template <class... Arguments>
Status passOn(const char* name, Arguments... arguments) {
  const auto function =
      std::bit_cast<Status(WINAPI*)(Arguments...)>(GetProcAddress(systemGdiPlus(), name));
  return function != nullptr ? function(arguments...) : kGenericError;
}

std::string utf8(const wchar_t* text) {
  if (text == nullptr) return {};
  const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
  std::string converted(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text, -1, converted.data(), size, nullptr, nullptr);
  converted.pop_back();  // the final zero
  return converted;
}

std::string textOf(const GUID& guid) {
  std::array<char, 40> text{};
  const BYTE* const d = guid.Data4;
  std::snprintf(text.data(), text.size(), "{%08lX-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
                guid.Data1, guid.Data2, guid.Data3, d[0], d[1], d[2], d[3], d[4], d[5], d[6], d[7]);
  return text.data();
}

std::string textOf(const EncoderParameters* parameters) {
  if (parameters == nullptr) return "none";
  std::string text = "count=" + std::to_string(parameters->count);
  for (UINT i = 0; i < parameters->count; ++i) {
    const EncoderParameter& each = parameters->parameter[i];
    text += " guid=" + textOf(each.guid) + " type=" + std::to_string(each.type) +
            " values=" + std::to_string(each.numberOfValues);
    if (each.type != kTypeLong) continue;
    for (ULONG value = 0; value < each.numberOfValues; ++value) {
      text += " value=" + std::to_string(static_cast<const LONG*>(each.value)[value]);
    }
  }
  return text;
}

void record(const std::string& line) {
  std::array<wchar_t, MAX_PATH> name{};
  const DWORD length =
      GetEnvironmentVariableW(L"ZYN_GDIPLUS_RECORD", name.data(), static_cast<DWORD>(name.size()));
  if (length == 0 || length >= name.size()) return;
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(_wfopen(name.data(), L"ab"),
                                                             std::fclose);
  if (file) std::fwrite(line.data(), 1, line.size(), file.get());
}

/// Bytes of a file, 0 where there is none.
std::string sizeOf(const wchar_t* fileName) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  GetFileAttributesExW(fileName, GetFileExInfoStandard, &data);
  return std::to_string(data.nFileSizeLow);
}

/// What the stream calls itself; nothing for one in memory.
std::string nameOf(IStream* stream) {
  STATSTG state{};
  if (FAILED(stream->Stat(&state, STATFLAG_DEFAULT))) return {};
  std::string name = utf8(state.pwcsName);
  CoTaskMemFree(state.pwcsName);
  return name;
}

/// Bytes of the file that the environment variable ZYN_GDIPLUS_WATCH names.
std::string watchedSize() {
  std::array<wchar_t, MAX_PATH> name{};
  GetEnvironmentVariableW(L"ZYN_GDIPLUS_WATCH", name.data(), static_cast<DWORD>(name.size()));
  return sizeOf(name.data());
}

}  // namespace

extern "C" {

Status WINAPI GdiplusStartup(ULONG_PTR* token, const void* input, void* output) {
  return passOn("GdiplusStartup", token, input, output);
}

void WINAPI GdiplusShutdown(ULONG_PTR token) { passOn("GdiplusShutdown", token); }

Status WINAPI GdipCreateBitmapFromScan0(INT width, INT height, INT stride, INT format, BYTE* pixels,
                                        void** bitmap) {
  return passOn("GdipCreateBitmapFromScan0", width, height, stride, format, pixels, bitmap);
}

Status WINAPI GdipBitmapSetResolution(void* bitmap, float x, float y) {
  return passOn("GdipBitmapSetResolution", bitmap, x, y);
}

Status WINAPI GdipDisposeImage(void* image) { return passOn("GdipDisposeImage", image); }

Status WINAPI GdipGetImageEncoders(UINT count, UINT size, void* encoders) {
  return passOn("GdipGetImageEncoders", count, size, encoders);
}

Status WINAPI GdipGetImageEncodersSize(UINT* count, UINT* size) {
  return passOn("GdipGetImageEncodersSize", count, size);
}

/// One line a call: file name, function, bytes of the file, separated by tabs.
Status WINAPI GdipLoadImageFromFile(const wchar_t* fileName, void** image) {
  record(utf8(fileName) + "\tGdipLoadImageFromFile\t" + sizeOf(fileName) + '\n');
  return passOn("GdipLoadImageFromFile", fileName, image);
}

/// One line a call: the stream's name, class identifier of the encoder, parameters, bytes of the
/// watched file, separated by tabs.
Status WINAPI GdipSaveImageToStream(void* image, IStream* stream, const CLSID* encoder,
                                    const EncoderParameters* parameters) {
  record(nameOf(stream) + '\t' + textOf(*encoder) + '\t' + textOf(parameters) + '\t' +
         watchedSize() + '\n');
  return passOn("GdipSaveImageToStream", image, stream, encoder, parameters);
}

}  // extern "C"
