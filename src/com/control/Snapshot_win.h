#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

namespace zyn {

/// A 32-bit bitmap with a device context to draw into, and to be drawn from.
class Snapshot {
 public:
  /// Both sides above 0. Test with operator bool whether the bitmap could be made.
  explicit Snapshot(SIZE pixels);
  Snapshot(const Snapshot&) = delete;
  Snapshot& operator=(const Snapshot&) = delete;
  ~Snapshot();

  explicit operator bool() const noexcept { return bits_ != nullptr; }
  HDC dc() const noexcept { return dc_.get(); }
  RECT bounds() const noexcept { return {0, 0, pixels_.cx, pixels_.cy}; }

  /// Draws the bitmap into a rectangle of any device context, in its logical units.
  void drawInto(HDC dc, const RECT& bounds) const;

  /// Gives the bitmap away; the snapshot is empty afterwards.
  HBITMAP release() noexcept;

 private:
  struct DeleteContext {
    void operator()(HDC dc) const { DeleteDC(dc); }
  };
  struct DeleteBitmap {
    void operator()(HBITMAP bitmap) const { DeleteObject(bitmap); }
  };

  SIZE pixels_;
  std::unique_ptr<std::remove_pointer_t<HDC>, DeleteContext> dc_;
  std::unique_ptr<std::remove_pointer_t<HBITMAP>, DeleteBitmap> bitmap_;
  HGDIOBJ initial_ = nullptr;
  void* bits_ = nullptr;
};

}  // namespace zyn
