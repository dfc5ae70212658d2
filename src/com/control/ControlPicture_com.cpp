#include "com/control/ControlPicture_com.h"

#include <memory>
#include <new>
#include <type_traits>

#include "com/control/ControlHooks_com.h"
#include "com/control/Snapshot_win.h"

namespace zyn {

namespace {

struct DeleteClosedMetafile {
  void operator()(HMETAFILE file) const { DeleteMetaFile(file); }
};
struct DeleteOpenMetafile {
  void operator()(HDC dc) const { DeleteMetaFile(CloseMetaFile(dc)); }
};
struct DeleteOpenEnhMetafile {
  void operator()(HDC dc) const { DeleteEnhMetaFile(CloseEnhMetaFile(dc)); }
};
struct FreeGlobal {
  void operator()(HGLOBAL memory) const { GlobalFree(memory); }
};

template <class Handle>
Handle made(Handle handle) {
  if (!handle) {
    throw std::bad_alloc();
  }
  return handle;
}

}  // namespace

HGLOBAL metafilePicture(ControlHooks& control, SIZE pixels, Extent extent) {
  std::unique_ptr<void, FreeGlobal> memory(made(GlobalAlloc(GMEM_MOVEABLE, sizeof(METAFILEPICT))));
  std::unique_ptr<std::remove_pointer_t<HDC>, DeleteOpenMetafile> dc(
      made(CreateMetaFileW(nullptr)));
  SetMapMode(dc.get(), MM_ANISOTROPIC);
  SetWindowOrgEx(dc.get(), 0, 0, nullptr);
  SetWindowExtEx(dc.get(), pixels.cx, pixels.cy, nullptr);
  control.drawInto(dc.get(), {0, 0, pixels.cx, pixels.cy}, pixels);
  std::unique_ptr<std::remove_pointer_t<HMETAFILE>, DeleteClosedMetafile> file(
      made(CloseMetaFile(dc.release())));
  auto* const picture = static_cast<METAFILEPICT*>(made(GlobalLock(memory.get())));
  *picture = {MM_ANISOTROPIC, extent.width, extent.height, file.release()};
  GlobalUnlock(memory.get());
  return memory.release();
}

HENHMETAFILE enhancedMetafile(ControlHooks& control, SIZE pixels, Extent extent) {
  const RECT frame = {0, 0, extent.width, extent.height};
  std::unique_ptr<std::remove_pointer_t<HDC>, DeleteOpenEnhMetafile> dc(
      made(CreateEnhMetaFileW(nullptr, nullptr, &frame, nullptr)));
  control.drawInto(dc.get(), {0, 0, pixels.cx, pixels.cy}, pixels);
  return made(CloseEnhMetaFile(dc.release()));
}

HBITMAP bitmapPicture(ControlHooks& control, SIZE pixels) {
  Snapshot snapshot(pixels);
  if (!snapshot) {
    throw std::bad_alloc();
  }
  control.drawInto(snapshot.dc(), {0, 0, pixels.cx, pixels.cy}, pixels);
  return snapshot.release();
}

}  // namespace zyn
