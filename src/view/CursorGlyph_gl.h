#pragma once

#include "glcontext/gl_api.h"
#include "view/Colour3.h"

namespace zyn {

/// The cross of 13 by 13 pixels of a screen that marks a cursor position. It belongs to the context
/// in which it is made, which has to be current at both ends of its life.
class CursorGlyph {
 public:
  /// Leaves the rows of images byte-aligned in the context, as all that draws images expects.
  CursorGlyph();
  ~CursorGlyph();
  CursorGlyph(const CursorGlyph&) = delete;
  CursorGlyph& operator=(const CursorGlyph&) = delete;

  /// Draws it black, or in another colour, and unlit, centred on a point of the scene, `pixelScale`
  /// times as large. Leaves the state as it was.
  void draw(float x, float y, float z, double pixelScale = 1.0, const Colour3& colour = {}) const;

 private:
  GLuint list_;
};

}  // namespace zyn
