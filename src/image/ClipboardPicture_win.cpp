#include "image/ClipboardPicture_win.h"

#include <windows.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "image/GdiPlus_win.h"
#include "platform/Failure_win.h"

namespace zyn {

namespace {

[[noreturn]] void fail(const wchar_t* what) { throw systemFailure(GetLastError(), what); }

struct FreeGlobal {
  void operator()(void* memory) const { GlobalFree(memory); }
};
using GlobalMemory = std::unique_ptr<void, FreeGlobal>;

/// What `parts` hold, one behind the other.
GlobalMemory makeGlobal(std::initializer_list<std::span<const std::uint8_t>> parts) {
  std::size_t bytes = 0;
  for (const auto& part : parts) {
    bytes += part.size();
  }
  GlobalMemory memory(GlobalAlloc(GMEM_MOVEABLE, bytes));
  auto* to = memory ? static_cast<std::uint8_t*>(GlobalLock(memory.get())) : nullptr;
  if (!to) {
    throw std::bad_alloc();
  }
  for (const auto& part : parts) {
    std::memcpy(to, part.data(), part.size());
    to += part.size();
  }
  GlobalUnlock(memory.get());
  return memory;
}

GlobalMemory makeDib(const PixelView& picture) {
  const auto headers = bmpHeader(picture.width, picture.height);
  return makeGlobal({std::span(headers).subspan(kBmpFileHeaderBytes),
                     {picture.bytes, static_cast<std::size_t>(picture.rowBytes * picture.height)}});
}

GlobalMemory makePng(const AlphaPicture& picture) {
  const GdiPlus gdiPlus;
  return makeGlobal({gdiPlus.encoded(gdiPlus.imageOf(picture), L"image/png")});
}

/// A window that owns the clipboard: nobody can put anything there without one.
class OwnerWindow {
 public:
  OwnerWindow()
      : window_(CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr,
                                nullptr)) {
    if (!window_) {
      fail(L"No window for the clipboard could be made");
    }
  }
  ~OwnerWindow() { DestroyWindow(window_); }
  OwnerWindow(const OwnerWindow&) = delete;
  OwnerWindow& operator=(const OwnerWindow&) = delete;

  HWND get() const { return window_; }

 private:
  HWND window_;
};

/// The clipboard, open. Programs that watch it hold it for moments.
class OpenedClipboard {
 public:
  explicit OpenedClipboard(HWND owner) {
    constexpr int kAttempts = 10;
    constexpr DWORD kPause = 20;  // milliseconds
    for (int i = 0; !OpenClipboard(owner); ++i) {
      if (i == kAttempts) {
        fail(L"The clipboard could not be opened");
      }
      Sleep(kPause);
    }
  }
  ~OpenedClipboard() { CloseClipboard(); }
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;

  /// What it takes is its own from then on.
  template <class Owner>
  void put(UINT format, Owner data) const {
    if (!SetClipboardData(format, data.get())) {
      fail(L"The clipboard did not take the picture");
    }
    static_cast<void>(data.release());
  }
};

}  // namespace

void copyToClipboard(const PixelView& picture, const AlphaPicture* transparent,
                     UniqueMetafile metafile) {
  GlobalMemory dib = makeDib(picture);
  GlobalMemory png = transparent ? makePng(*transparent) : nullptr;
  const OwnerWindow owner;
  const OpenedClipboard clipboard(owner.get());
  if (!EmptyClipboard()) {
    fail(L"The clipboard could not be emptied");
  }
  if (png) {
    clipboard.put(RegisterClipboardFormatW(L"PNG"), std::move(png));
  }
  if (metafile) {
    clipboard.put(CF_ENHMETAFILE, std::move(metafile));
  }
  clipboard.put(CF_DIB, std::move(dib));
}

}  // namespace zyn
