#pragma once

#include <array>
#include <vector>

#include "support/View3DHost_win.h"
// After windows.h:
#include <GL/gl.h>

namespace zyn::bench {

test::Vec transformed(const std::array<GLdouble, 16>& matrix, const test::Vec& at);

/// RGBA pictures of one size at points of the scene, each with its own pixels: the least that has
/// to be drawn of as many labels, in each of the ways that OpenGL 1.1 has.
class ReadyPictures {
 public:
  enum Way { kPixels, kTextures, kOneTexture, kBitmaps };
  static constexpr std::array<Way, 4> kWays = {kPixels, kTextures, kOneTexture, kBitmaps};
  static const char* nameOf(Way way);

  ReadyPictures(std::vector<test::Vec> places, int width, int height);

  /// From the current matrices; lower left corners are at the places.
  void draw(Way way);

 private:
  /// Textures of as many pictures each.
  struct Sheets {
    int columns;
    int rows;
    std::vector<GLuint> textures{};

    std::size_t pictures() const { return static_cast<std::size_t>(columns * rows); }
  };

  void makeTextures(Sheets& sheets) const;
  void drawTextures(Sheets& sheets) const;

  std::vector<test::Vec> places_;
  int width_;
  int height_;
  std::vector<std::vector<GLubyte>> pictures_;
  Sheets single_{1, 1};
  Sheets whole_;
};

}  // namespace zyn::bench
