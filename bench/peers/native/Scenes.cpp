#include "Scenes.h"

#include <cmath>
#include <cstdio>
#include <random>

namespace scenes {

namespace {

constexpr double kTurn = 2 * 3.14159265358979323846;

Vec vec(double x, double y, double z) {
  return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
}

}  // namespace

Mesh torus(int around, int across) {
  Mesh mesh;
  const auto at = [&](int i, int j) {
    return static_cast<unsigned>(i % around * across + j % across);
  };
  for (int i = 0; i < around; ++i) {
    for (int j = 0; j < across; ++j) {
      const double u = kTurn * i / around;
      const double v = kTurn * j / across;
      const double out = std::cos(v);
      mesh.normals.push_back(vec(std::cos(u) * out, std::sin(u) * out, std::sin(v)));
      const double radius = 30 + 12 * out;
      mesh.points.push_back(vec(std::cos(u) * radius, std::sin(u) * radius, 12 * std::sin(v)));
      const unsigned a = at(i, j);
      const unsigned c = at(i + 1, j + 1);
      for (const unsigned corner : {a, at(i + 1, j), c, a, c, at(i, j + 1)}) {
        mesh.faces.push_back(corner);
      }
    }
  }
  return mesh;
}

Vec randomColour(unsigned number) {
  std::minstd_rand random(number + 1);
  random.discard(2);
  std::uniform_real_distribution<float> shade(0.2F, 1);
  return {shade(random), shade(random), shade(random)};
}

Line path() {
  constexpr int kCount = 1'000'001;
  constexpr int kChords = 20;
  constexpr int kRows = 200;
  constexpr int kLayers = (kCount - 1) / kChords / kRows + 1;
  Line line;
  for (int i = 0; i < kCount; ++i) {
    const int row = i / kChords % kRows;
    const int layer = i / kChords / kRows;
    const double along = i % kChords / (kChords - 1.0);
    const double x = 90 * (row % 2 == 0 ? along : 1 - along);
    line.points.push_back(vec(x, row * 0.45, layer * 60.0 / kLayers + 2 * std::sin(x * 0.1)));
  }
  for (int i = 0; i < kAppended; ++i) {
    line.appended.push_back(vec(i * 0.05, 20.0 + i % 7, 65));
  }
  return line;
}

Plane trace() {
  constexpr int kCount = 1'000'000;
  std::mt19937 random(1);
  std::normal_distribution<double> noise(0, 0.002);
  Plane plane;
  for (int i = 0; i < kCount + kAppended; ++i) {
    const double x = static_cast<double>(i) / kCount;
    const double y = 0.5 + 0.3 * std::sin(20 * x) + 0.1 * std::sin(300 * x) + noise(random);
    (i < kCount ? plane.x : plane.moreX).push_back(x);
    (i < kCount ? plane.y : plane.moreY).push_back(y);
  }
  return plane;
}

Labels labels() {
  constexpr int kCount = 1000;
  std::mt19937 random(1);
  std::uniform_real_distribution<double> place(-50, 50);
  Labels labels;
  for (int i = 0; i < kCount; ++i) {
    labels.points.push_back(vec(place(random), place(random), place(random)));
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "Label %06d", i);
    labels.texts.emplace_back(text.data());
  }
  return labels;
}

}  // namespace scenes
