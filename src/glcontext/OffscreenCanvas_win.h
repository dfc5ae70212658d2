#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "glcontext/CurrentContext_win.h"
#include "glcontext/RenderingContext_win.h"
#include "glcontext/SharedBitmap_win.h"
#include "glcontext/Tile.h"
#include "platform/Failure_win.h"

namespace zyn {

/// Why there is nothing to draw on.
class CanvasFailure : public Failure {
 public:
  explicit CanvasFailure(Failure why, std::wstring message = {})
      : Failure(std::move(why)), message_(std::move(message)) {}

  /// What the user is to be told; may be empty.
  const std::wstring& message() const noexcept { return message_; }

 private:
  std::wstring message_;
};

/// What OpenGL draws a picture on, tile by tile, with a rendering context of its own.
///
/// It is a bitmap of 32 bits a pixel; where OpenGL does not draw on bitmaps, the back buffer of a
/// window that is never shown. Whether it holds what is drawn is found out when it is made; where
/// it does not, or cannot be made so large, it is made smaller, and there are more tiles.
class OffscreenCanvas {
 public:
  /// For a picture of that size in pixels. Throws the CanvasFailure of the best canvas, that is of
  /// a bitmap, when none can be made.
  static std::unique_ptr<OffscreenCanvas> make(int pictureWidth, int pictureHeight);

  ~OffscreenCanvas();
  OffscreenCanvas(const OffscreenCanvas&) = delete;
  OffscreenCanvas& operator=(const OffscreenCanvas&) = delete;

  /// False once the program has destroyed the window, as who closes all windows of a thread does.
  bool exists() const;

  /// Makes the rendering context current for a scope.
  CurrentContext makeCurrent() const;

  /// Keeps what belongs to the rendering context for as long as it lives.
  void keep(std::shared_ptr<void> belonging) { context_.keep(std::move(belonging)); }

  /// Throws that a function of OpenGL has failed, and that the user is to hear of it.
  [[noreturn]] static void failAloud(const std::wstring& function);

  /// The tiles in which a picture is drawn, at the lower left of the canvas each.
  std::vector<Tile> tilesOf(const SharedBitmap& picture) const;

  /// Brings what has been drawn of a tile to its place in the picture, with the context current.
  void copy(const Tile& tile, const SharedBitmap& picture) const;

 private:
  class Sheet;
  class BitmapSheet;
  class WindowSheet;

  template <class Kind>
  static std::unique_ptr<Sheet> makeSheet(int width, int height);
  OffscreenCanvas(std::unique_ptr<Sheet> sheet, int largestTile);
  bool isWhole() const;

  /// The context draws on it, and goes first.
  std::unique_ptr<Sheet> sheet_;
  RenderingContext context_;
  int largestTile_;
};

}  // namespace zyn
