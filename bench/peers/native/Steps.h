#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

/// A scene of a product. A frame ends when its last pixel is there.
class Scene {
 public:
  virtual ~Scene() = default;
  virtual void build() = 0;  ///< all objects from arrays, in the view
  virtual void look() = 0;   ///< at all of it
  virtual void turn() = 0;   ///< the camera, or moves the plane
  virtual void draw() = 0;
  virtual bool pick(int x, int y) = 0;  ///< pixels from the upper left
  virtual void change() = 0;            ///< one colour, point or text, or appends points
  virtual void save(const std::string& path) = 0;
};

using MakeScene = std::function<std::unique_ptr<Scene>()>;

template <class T>
MakeScene makes() {
  return [] { return std::make_unique<T>(); };
}

/// Measures the scene that the first argument names, leaves its picture in the folder of the second
/// and prints a row of a table: milliseconds of the steps of ../main.py, and megabytes. With
/// "scenes" alone it prints the names of those there are.
int measure(int count, char** arguments, const std::map<std::string, MakeScene>& scenes);
