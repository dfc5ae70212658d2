#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

namespace zyn {

struct CloseDC {
  void operator()(HDC dc) const { DeleteDC(dc); }
};
struct CloseWindowDC {
  void operator()(HDC dc) const { ReleaseDC(window, dc); }
  HWND window = nullptr;
};
struct CloseBitmap {
  void operator()(HBITMAP bitmap) const { DeleteObject(bitmap); }
};
struct CloseMetafile {
  void operator()(HENHMETAFILE metafile) const { DeleteEnhMetaFile(metafile); }
};
struct CloseRenderingContext {
  void operator()(HGLRC context) const { wglDeleteContext(context); }
};
struct CloseKernelHandle {
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};
struct CloseView {
  void operator()(void* view) const { UnmapViewOfFile(view); }
};

struct CloseModule {
  void operator()(HMODULE module) const { FreeLibrary(module); }
};

/// A memory device context made by CreateCompatibleDC.
using UniqueDC = std::unique_ptr<std::remove_pointer_t<HDC>, CloseDC>;
/// A device context of a window, got by GetDC.
using UniqueWindowDC = std::unique_ptr<std::remove_pointer_t<HDC>, CloseWindowDC>;
/// A bitmap; it must not be selected into a device context when it is freed.
using UniqueBitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, CloseBitmap>;
using UniqueMetafile = std::unique_ptr<std::remove_pointer_t<HENHMETAFILE>, CloseMetafile>;
/// A WGL rendering context; it must not be current on another thread when it is freed.
using UniqueRenderingContext = std::unique_ptr<std::remove_pointer_t<HGLRC>, CloseRenderingContext>;
/// A kernel object whose invalid value is null (a file mapping, an event; not a file).
using UniqueKernelHandle = std::unique_ptr<void, CloseKernelHandle>;
/// A mapped view of a file mapping.
using UniqueView = std::unique_ptr<void, CloseView>;

/// A loaded library.
using UniqueModule = std::unique_ptr<std::remove_pointer_t<HMODULE>, CloseModule>;

}  // namespace zyn
