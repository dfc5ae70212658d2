#pragma once

#include <cstdint>
#include <map>
#include <tuple>
#include <vector>

#include "glcontext/VertexArrays_gl.h"
#include "plot/Coverage.h"

namespace zyn {

/// Small figures with soft edges, drawn from one texture for as long as it lives. What is drawn
/// waits until `flush`; blending and all else are the caller's.
class SpriteAtlas {
 public:
  /// What tells figures apart of which each is made once.
  struct Key {
    const void* shape;
    double size;
    bool isUpright;
    int phaseX;  ///< where in a pixel its origin lies
    int phaseY;

    bool operator<(const Key& other) const {
      const auto parts = [](const Key& key) {
        return std::tie(key.shape, key.size, key.isUpright, key.phaseX, key.phaseY);
      };
      return parts(*this) < parts(other);
    }
  };

  SpriteAtlas() = default;
  ~SpriteAtlas();
  SpriteAtlas(const SpriteAtlas&) = delete;
  SpriteAtlas& operator=(const SpriteAtlas&) = delete;

  /// Draws a figure with its origin at a corner of pixels; `make()` gives its Coverage where the
  /// key is new. False where it is too large.
  template <class Make>
  bool draw(const Key& key, int x, int y, const DrawColour& colour, const Make& make) {
    auto known = sprites_.find(key);
    if (known == sprites_.end()) {
      known = sprites_.emplace(key, stored(make())).first;
    }
    return add(known->second, x, y, colour);
  }

  void flush();

 private:
  /// A figure in the texture.
  struct Sprite {
    int left = 0;  ///< of its lower left pixel, from its origin
    int bottom = 0;
    int width = 0;
    int height = 0;
    int u = 0;  ///< texels
    int v = 0;
    bool isTooLarge = false;
  };

  Sprite stored(const Coverage& coverage);
  bool add(const Sprite& sprite, int x, int y, const DrawColour& colour);
  void upload();
  void clear();

  static constexpr int kSide = 512;

  std::map<Key, Sprite> sprites_;
  std::vector<std::uint8_t> texels_;
  int u_ = 0;  ///< where the next one goes: in shelves, each as high as its highest
  int v_ = 0;
  int shelf_ = 0;
  int dirtyLow_ = kSide;  ///< rows that the texture does not have yet
  int dirtyHigh_ = 0;
  GLuint texture_ = 0;
  VertexArrays quads_;
};

}  // namespace zyn
