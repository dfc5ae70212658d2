#include "bench/ReadyPictures.h"

#include <algorithm>
#include <bit>
#include <random>
#include <utility>

namespace zyn::bench {

using test::Vec;

namespace {

/// Cells of the textures, in which a picture lies in the lower left corner.
constexpr int kCellWidth = 128;
constexpr int kCellHeight = 16;

/// As high as it has to be, for textures are as large as powers of two.
int rowsFor(std::size_t pictures, int columns) {
  return static_cast<int>(std::bit_ceil(pictures / static_cast<std::size_t>(columns) + 1));
}

}  // namespace

Vec transformed(const std::array<GLdouble, 16>& matrix, const Vec& at) {
  const auto row = [&](std::size_t i) {
    return matrix[i] * at.x + matrix[4 + i] * at.y + matrix[8 + i] * at.z + matrix[12 + i];
  };
  return {row(0), row(1), row(2)};
}

const char* ReadyPictures::nameOf(Way way) {
  constexpr std::array<const char*, 4> kNames = {"glDrawPixels", "quads of a texture each",
                                                 "quads of one texture", "glBitmap"};
  return kNames[way];
}

ReadyPictures::ReadyPictures(std::vector<Vec> places, int width, int height)
    : places_(std::move(places)),
      width_(std::min(width, kCellWidth)),
      height_(std::min(height, kCellHeight)),
      whole_{16, rowsFor(places_.size(), 16)} {
  std::mt19937 random(2);
  for (std::size_t i = 0; i < places_.size(); ++i) {
    std::vector<GLubyte> pixels(4 * static_cast<std::size_t>(width_ * height_));
    std::generate(pixels.begin(), pixels.end(), [&] { return static_cast<GLubyte>(random()); });
    pictures_.push_back(std::move(pixels));
  }
}

void ReadyPictures::draw(Way way) {
  glPushAttrib(GL_ALL_ATTRIB_BITS);
  glDisable(GL_LIGHTING);
  glDisable(GL_DEPTH_TEST);
  glColor4d(0, 0, 0, 1);
  if (way == kTextures || way == kOneTexture) {
    drawTextures(way == kTextures ? single_ : whole_);
  } else {
    for (std::size_t i = 0; i < places_.size(); ++i) {
      const Vec& at = places_[i];
      glRasterPos3d(at.x, at.y, at.z);
      if (way == kPixels) {
        glDrawPixels(width_, height_, GL_RGBA, GL_UNSIGNED_BYTE, pictures_[i].data());
      } else {
        glBitmap(width_, height_, 0, 0, 0, 0, pictures_[i].data());
      }
    }
  }
  glPopAttrib();
}

void ReadyPictures::makeTextures(Sheets& sheets) const {
  sheets.textures.resize((places_.size() + sheets.pictures() - 1) / sheets.pictures());
  glGenTextures(static_cast<GLsizei>(sheets.textures.size()), sheets.textures.data());
  for (std::size_t i = 0; i < pictures_.size(); ++i) {
    const std::size_t cell = i % sheets.pictures();
    if (cell == 0) {
      glBindTexture(GL_TEXTURE_2D, sheets.textures[i / sheets.pictures()]);
      glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
      glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
      glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, kCellWidth * sheets.columns,
                   kCellHeight * sheets.rows, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
    }
    glTexSubImage2D(GL_TEXTURE_2D, 0, kCellWidth * (static_cast<int>(cell) % sheets.columns),
                    kCellHeight * (static_cast<int>(cell) / sheets.columns), width_, height_,
                    GL_RGBA, GL_UNSIGNED_BYTE, pictures_[i].data());
  }
}

/// Upright, a unit a pixel, at each place on the screen.
void ReadyPictures::drawTextures(Sheets& sheets) const {
  if (sheets.textures.empty()) {
    makeTextures(sheets);
  }
  std::array<GLdouble, 16> camera{};
  std::array<GLdouble, 16> projection{};
  std::array<GLint, 4> viewport{};
  glGetDoublev(GL_MODELVIEW_MATRIX, camera.data());
  glGetDoublev(GL_PROJECTION_MATRIX, projection.data());
  glGetIntegerv(GL_VIEWPORT, viewport.data());
  const double right = 2 * width_ / (projection[0] * viewport[2]);
  const double up = 2 * height_ / (projection[5] * viewport[3]);
  const double s = static_cast<double>(width_) / (kCellWidth * sheets.columns);
  const double t = static_cast<double>(height_) / (kCellHeight * sheets.rows);
  glMatrixMode(GL_MODELVIEW);
  glPushMatrix();
  glLoadIdentity();
  glEnable(GL_TEXTURE_2D);
  glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
  for (std::size_t i = 0; i < places_.size(); ++i) {
    const std::size_t cell = i % sheets.pictures();
    if (cell == 0) {
      glBindTexture(GL_TEXTURE_2D, sheets.textures[i / sheets.pictures()]);
      glBegin(GL_QUADS);
    }
    const Vec eye = transformed(camera, places_[i]);
    const double left =
        static_cast<double>(static_cast<int>(cell) % sheets.columns) / sheets.columns;
    const double bottom =
        static_cast<double>(static_cast<int>(cell) / sheets.columns) / sheets.rows;
    glTexCoord2d(left, bottom), glVertex3d(eye.x, eye.y, eye.z);
    glTexCoord2d(left + s, bottom), glVertex3d(eye.x + right, eye.y, eye.z);
    glTexCoord2d(left + s, bottom + t), glVertex3d(eye.x + right, eye.y + up, eye.z);
    glTexCoord2d(left, bottom + t), glVertex3d(eye.x, eye.y + up, eye.z);
    if (cell + 1 == sheets.pictures() || i + 1 == places_.size()) {
      glEnd();
    }
  }
  glPopMatrix();
}

}  // namespace zyn::bench
