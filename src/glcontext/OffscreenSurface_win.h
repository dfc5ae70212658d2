#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "glcontext/SharedBitmap_win.h"
#include "glcontext/Tile.h"
#include "platform/Failure_win.h"
#include "platform/WinHandles_win.h"

namespace zyn {

/// A picture in memory that OpenGL draws into: a bottom-up DIB section of 24 bits a pixel with a
/// rendering context of its own.
///
/// The picture can be handed over to another owner; both then share one memory, and the surface
/// stays usable whatever the other owner does. Where foreign code leaves a pass without its end
/// (RunningScope), the surface is empty afterwards. One thread at a time.
class OffscreenSurface {
 public:
  /// Tells the user, and may wait for him.
  using TellUser = std::function<void(const std::wstring& text)>;
  /// Sets up state of the new rendering context, which is current, and makes what belongs
  /// to it (display lists, fonts): kept with the context, and let go with it current just before it
  /// is deleted.
  using Prepare = std::function<std::shared_ptr<void>()>;
  /// Draws one tile: the viewport is set, projection and everything else is the callee's.
  using Draw = std::function<void(const Tile& tile)>;

  /// `tellUser` is called when a rendering context cannot be created or made current.
  explicit OffscreenSurface(TellUser tellUser);
  ~OffscreenSurface();
  OffscreenSurface(const OffscreenSurface&) = delete;
  OffscreenSurface& operator=(const OffscreenSurface&) = delete;

  /// Replaces the picture by a new one of this size in pixels, its rendering context prepared by
  /// `prepare` and cleared. The surface is left empty, without a rendering context, by sizes below
  /// 1, sizes whose memory cannot be had, systems without a fitting pixel format, and where
  /// `prepare` throws, which is passed on.
  void create(std::int64_t width, std::int64_t height, const Prepare& prepare);

  /// Makes more of what belongs to the rendering context, with it current; nothing on an empty
  /// surface. What `prepare` throws is passed on.
  void equip(const Prepare& prepare);

  /// Whether there is a rendering context to draw with.
  bool hasContext() const;
  /// Whether the program has destroyed what is drawn on.
  bool isDestroyed() const;

  /// Why there is none, if `create` could not make one.
  const std::optional<Failure>& whyEmpty() const { return whyEmpty_; }

  /// Throws why there is none, if so.
  void requireContext() const;

  /// Draws the picture afresh, calling `draw` once a tile with the rendering context current. Does
  /// nothing on an empty surface and while a pass is under way; `draw` may create the surface anew.
  /// What `draw` throws is passed on; the picture is then undefined, the surface usable.
  void render(const Draw& draw);

  /// Size in pixels last asked of `create`, whether or not it could be made.
  std::int64_t width() const { return width_; }
  std::int64_t height() const { return height_; }

  /// The picture, null on an empty surface. Valid until `create`.
  const SharedBitmap* picture() const;

  /// Hands over the picture's DIB section; null on an empty surface. Its pixels go on showing what
  /// is drawn into the surface.
  UniqueBitmap handOverBitmap();

 private:
  struct Target;
  class Passes;

  std::shared_ptr<Target> make(const Prepare& prepare) const;

  TellUser tellUser_;
  std::int64_t width_ = 0;
  std::int64_t height_ = 0;
  std::optional<Failure> whyEmpty_;
  /// Shared with a pass under way, which survives the surface being created anew meanwhile.
  std::shared_ptr<Target> target_;
};

}  // namespace zyn
