#pragma once

#include "glcontext/CurrentContext_win.h"

namespace zyn {

/// To be held while an object of another component draws in one of our contexts. Puts right at its
/// end what would keep everything else from being drawn, in this picture and in all later ones:
/// another context or none made current, primitives or a display list begun and not ended, another
/// render mode than GL_RENDER, another floating-point environment.
class OutsideDrawing {
 public:
  /// In a selection or feedback pass the render mode is left alone.
  explicit OutsideDrawing(bool keepsMode);
  ~OutsideDrawing();
  OutsideDrawing(const OutsideDrawing&) = delete;
  OutsideDrawing& operator=(const OutsideDrawing&) = delete;

 private:
  NotedContext context_;
  bool keepsMode_;
};

}  // namespace zyn
