#pragma once

#include <windows.h>

#include <ocidl.h>
#include <wrl/client.h>

#include <memory>
#include <optional>

#include "core/PixelImage.h"
#include "platform/RunningScope_win.h"

namespace zyn {

/// Reads a picture object (bitmap, icon, metafile) in its natural size on the screen. With a `key`,
/// pixels of exactly that colour become transparent and all others opaque. Without one, an alpha of
/// its own stays; where there is none, as in metafiles, what the picture paints is opaque and what
/// it leaves out is transparent. Empty where `picture` is null, is no picture, is empty, cannot be
/// rendered, or is larger than any screen (16384 pixels a side, 32 million in all).
PixelImage readPictureImage(IUnknown* picture, const std::optional<ColourKey>& key);

/// A picture object and its pixels as OpenGL draws them, with one colour transparent where that is
/// asked for. The pixels are read anew at each change.
class ShownPicture {
 public:
  ShownPicture() = default;
  ShownPicture(const ShownPicture& other) { *this = other; }
  ShownPicture& operator=(const ShownPicture& other);
  ~ShownPicture() = default;

  const Microsoft::WRL::ComPtr<IDispatch>& source() const { return source_; }
  /// Holds a reference on the picture in place of the one before; null for none.
  void setSource(IDispatch* source);

  /// The low byte of each number counts.
  void setKey(LONG r, LONG g, LONG b);

  bool isTransparent() const { return transparent_; }
  void setTransparent(bool transparent);

  /// Null without a picture that can be drawn.
  const std::shared_ptr<const PixelImage>& image() const { return image_; }

 private:
  void convert();

  Microsoft::WRL::ComPtr<IDispatch> source_;
  ColourKey key_;
  bool transparent_ = false;
  std::shared_ptr<const PixelImage> image_;

  unsigned changes_ = 0;  ///< of what the conversion depends on
  RunningScope converting_;
};

}  // namespace zyn
