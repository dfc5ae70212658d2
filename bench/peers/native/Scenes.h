#pragma once

#include <array>
#include <string>
#include <vector>

/// What is drawn, as ../scenes.py makes it.
namespace scenes {

using Vec = std::array<float, 3>;

constexpr int kWidth = 800;  // of every picture
constexpr int kHeight = 600;
constexpr int kAppended = 1000;  // points, where the change is that a line grows
constexpr const char* kSpeech = "Changed";

struct Mesh {
  std::vector<Vec> points;
  std::vector<Vec> normals;
  std::vector<unsigned> faces;  // three corners each
};

struct Line {
  std::vector<Vec> points;
  std::vector<Vec> appended;
};

struct Plane {
  std::vector<double> x;
  std::vector<double> y;
  std::vector<double> moreX;
  std::vector<double> moreY;
};

struct Labels {
  std::vector<Vec> points;
  std::vector<std::string> texts;
};

/// A torus of twice as many triangles.
Mesh torus(int around, int across);
Vec randomColour(unsigned number);

inline Mesh objects() { return torus(500, 100); }
inline Mesh few() { return torus(500, 10); }
inline Mesh mesh() { return torus(1000, 500); }
Line path();
Plane trace();
Labels labels();

}  // namespace scenes
