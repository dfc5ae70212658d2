#include "plot/SpriteAtlas_gl.h"

#include <algorithm>
#include <cstddef>

#include "core/saturate.h"
#include "glcontext/StateGuards_gl.h"

namespace zyn {

namespace {

constexpr std::size_t kMostVertices = 1 << 16;

}  // namespace

SpriteAtlas::~SpriteAtlas() {
  if (texture_ != 0) {
    glDeleteTextures(1, &texture_);
  }
}

SpriteAtlas::Sprite SpriteAtlas::stored(const Coverage& coverage) {
  Sprite sprite{coverage.left, coverage.bottom, coverage.width, coverage.height, 0, 0, false};
  if (coverage.width > kSide || coverage.height > kSide) {
    sprite.isTooLarge = true;
    return sprite;
  }
  if (u_ + coverage.width > kSide) {
    u_ = 0;
    v_ += shelf_;
    shelf_ = 0;
  }
  if (v_ + coverage.height > kSide) {
    clear();
  }
  sprite.u = u_;
  sprite.v = v_;
  texels_.resize(std::size_t{kSide} * kSide);
  for (int row = 0; row < coverage.height; ++row) {
    std::copy_n(coverage.pixels.begin() + static_cast<std::ptrdiff_t>(row) * coverage.width,
                coverage.width, texels_.begin() + std::ptrdiff_t{v_ + row} * kSide + u_);
  }
  dirtyLow_ = std::min(dirtyLow_, v_);
  dirtyHigh_ = std::max(dirtyHigh_, v_ + coverage.height);
  u_ += coverage.width;
  shelf_ = std::max(shelf_, coverage.height);
  return sprite;
}

void SpriteAtlas::clear() {
  flush();
  sprites_.clear();
  u_ = 0;
  v_ = 0;
  shelf_ = 0;
}

bool SpriteAtlas::add(const Sprite& sprite, int x, int y, const DrawColour& colour) {
  if (sprite.isTooLarge) {
    return false;
  }
  if (quads_.positions.size() >= kMostVertices) {
    flush();
  }
  const std::array<GLfloat, 4> rgba = {saturatedFloat(colour.r), saturatedFloat(colour.g),
                                       saturatedFloat(colour.b), saturatedFloat(colour.alpha)};
  constexpr GLfloat kTexel = 1.0F / kSide;
  for (const auto& [right, top] : {std::array{0, 0}, {1, 0}, {1, 1}, {0, 1}}) {
    const int across = right * sprite.width;
    const int up = top * sprite.height;
    quads_.positions.push_back({static_cast<GLfloat>(x + sprite.left + across),
                                static_cast<GLfloat>(y + sprite.bottom + up), 0});
    quads_.coordinates.push_back({kTexel * static_cast<GLfloat>(sprite.u + across),
                                  kTexel * static_cast<GLfloat>(sprite.v + up)});
    quads_.colours.push_back(rgba);
  }
  return true;
}

void SpriteAtlas::flush() {
  if (quads_.positions.empty()) {
    return;
  }
  const PushedAttributes state(GL_TEXTURE_BIT | GL_ENABLE_BIT | GL_CURRENT_BIT);
  upload();
  glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
  glDisable(GL_TEXTURE_GEN_S);
  glDisable(GL_TEXTURE_GEN_T);
  glEnable(GL_TEXTURE_2D);
  const PushedMatrix matrix(GL_TEXTURE);
  glLoadIdentity();
  quads_.draw(GL_QUADS);
  quads_.clear();
}

/// Binds the texture, with all that it has to have.
void SpriteAtlas::upload() {
  const bool isNew = texture_ == 0;
  if (isNew) {
    glGenTextures(1, &texture_);
  }
  glBindTexture(GL_TEXTURE_2D, texture_);
  const PlainPixelStore store(1);
  if (isNew) {
    for (const GLenum name : GLNames{GL_TEXTURE_MIN_FILTER, GL_TEXTURE_MAG_FILTER}) {
      glTexParameteri(GL_TEXTURE_2D, name, GL_NEAREST);
    }
    glTexImage2D(GL_TEXTURE_2D, 0, GL_ALPHA, kSide, kSide, 0, GL_ALPHA, GL_UNSIGNED_BYTE,
                 texels_.data());
  } else if (dirtyLow_ < dirtyHigh_) {
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, dirtyLow_, kSide, dirtyHigh_ - dirtyLow_, GL_ALPHA,
                    GL_UNSIGNED_BYTE, texels_.data() + std::ptrdiff_t{dirtyLow_} * kSide);
  }
  dirtyLow_ = kSide;
  dirtyHigh_ = 0;
}

}  // namespace zyn
