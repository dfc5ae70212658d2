#include "com/control/ControlPicture_com.h"

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

std::unique_ptr<Snapshot> pictureOf(ControlHooks& control, SIZE pixels) {
  if (pixels.cx <= 0 || pixels.cy <= 0) {
    return nullptr;
  }
  const SIZE size = pictureSizeFor(pixels);
  auto picture = std::make_unique<Snapshot>(size);
  if (!*picture) {
    throw std::bad_alloc();
  }
  control.drawInto(picture->dc(), picture->bounds(), size);
  return picture;
}

HGLOBAL metafilePicture(const Snapshot& picture, Extent extent) {
  std::unique_ptr<void, FreeGlobal> memory(made(GlobalAlloc(GMEM_MOVEABLE, sizeof(METAFILEPICT))));
  std::unique_ptr<std::remove_pointer_t<HDC>, DeleteOpenMetafile> dc(
      made(CreateMetaFileW(nullptr)));
  const RECT bounds = picture.bounds();
  SetMapMode(dc.get(), MM_ANISOTROPIC);
  SetWindowOrgEx(dc.get(), 0, 0, nullptr);
  SetWindowExtEx(dc.get(), bounds.right, bounds.bottom, nullptr);
  picture.drawInto(dc.get(), bounds);
  std::unique_ptr<std::remove_pointer_t<HMETAFILE>, DeleteClosedMetafile> file(
      made(CloseMetaFile(dc.release())));
  auto* const description = static_cast<METAFILEPICT*>(made(GlobalLock(memory.get())));
  *description = {MM_ANISOTROPIC, extent.width, extent.height, file.release()};
  GlobalUnlock(memory.get());
  return memory.release();
}

HENHMETAFILE enhancedMetafile(const Snapshot& picture, Extent extent) {
  const RECT frame = {0, 0, extent.width, extent.height};
  std::unique_ptr<std::remove_pointer_t<HDC>, DeleteOpenEnhMetafile> dc(
      made(CreateEnhMetaFileW(nullptr, nullptr, &frame, nullptr)));
  // The frame in the pixels of the metafile's own device, whose resolution is not the screen's
  // nominal one.
  const auto measure = [&](LONG length, int pixels, int millimetres) {
    return MulDiv(length, GetDeviceCaps(dc.get(), pixels),
                  100 * GetDeviceCaps(dc.get(), millimetres));
  };
  picture.drawInto(dc.get(), {0, 0, measure(extent.width, HORZRES, HORZSIZE),
                              measure(extent.height, VERTRES, VERTSIZE)});
  return made(CloseEnhMetaFile(dc.release()));
}

}  // namespace zyn
