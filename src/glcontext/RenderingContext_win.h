#pragma once

#include <windows.h>

#include <memory>
#include <vector>

#include "platform/WinHandles_win.h"

namespace zyn {

/// A rendering context and what was made in it (display lists, fonts), which is let go while the
/// context is current, just before it is deleted. The device context has to live longer.
class RenderingContext {
 public:
  RenderingContext() = default;
  ~RenderingContext();
  RenderingContext(const RenderingContext&) = delete;
  RenderingContext& operator=(const RenderingContext&) = delete;

  /// Makes the context of an empty object; false if the system gives none (GetLastError tells why).
  bool create(HDC dc);

  /// What to draw on while belongings are let go, instead of what the context was made for: of the
  /// same pixel format.
  void drawOn(HDC dc) { dc_ = dc; }

  explicit operator bool() const { return context_ != nullptr; }
  HGLRC get() const { return context_.get(); }

  /// Keeps `belonging` for as long as the context lives; null is nothing.
  void keep(std::shared_ptr<void> belonging);

 private:
  HDC dc_ = nullptr;
  UniqueRenderingContext context_;
  std::vector<std::shared_ptr<void>> belongings_;
};

}  // namespace zyn
