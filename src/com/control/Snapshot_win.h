#pragma once

#include <windows.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <type_traits>

namespace zyn {

/// The largest side of a picture, and the most pixels that it has: containers tell sizes that no
/// memory holds.
inline constexpr double kLargestPictureSide = 8192;
inline constexpr double kMostPicturePixels = 1 << 24;

/// The size in which a picture of `pixels` is drawn for a container: larger ones are drawn smaller
/// and stretched. Sides are at least 1.
inline SIZE pictureSizeFor(SIZE pixels) {
  const double width = std::max(1L, pixels.cx);
  const double height = std::max(1L, pixels.cy);
  // The side first: a long strip may have few pixels, and few in height.
  const double strip = std::max(1.0, std::max(width, height) / kLargestPictureSide);
  const double area = (width / strip) * (height / strip);
  const double shrink = strip * std::max(1.0, std::sqrt(area / kMostPicturePixels));
  return {std::max(1L, static_cast<LONG>(width / shrink)),
          std::max(1L, static_cast<LONG>(height / shrink))};
}

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
