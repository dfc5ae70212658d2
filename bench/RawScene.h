#pragma once

#include <functional>

#include "support/ForeignObject_win.h"
#include "support/View3DHost_win.h"
// After windows.h:
#include <GL/gl.h>

namespace zyn::bench {

/// The limit of a scene: an outside object that draws all of it with one display list, compiled the
/// first time. It shares clearing, lights, matrices and presentation with what it is the limit of.
class RawScene {
 public:
  RawScene(std::function<void()> drawRaw, const test::Bounds& bounds);

  IDispatch* dispatch() const { return object_->dispatch(); }
  /// Deletes the list at the next drawing, which draws nothing; the one after it compiles anew.
  void forget() { isForgotten_ = true; }

 private:
  void draw();

  std::function<void()> drawRaw_;
  test::ComPtr<test::ForeignObject> object_;
  GLuint list_ = 0;
  bool isForgotten_ = false;
};

/// Size of all views and pictures that are compared.
constexpr SIZE kViewSize = {800, 600};

/// Adds the objects to the view's scene.
template <class Objects>
void addAll(const test::View3DHost& view, const Objects& objects) {
  for (const auto& object : objects) {
    test::require(view->Add(object.Get(), 0), "Add");
  }
}

/// Shows the whole of the scene from above.
void showAll(const test::View3DHost& view);

/// Adds an object, and shows the whole of it.
void show(const test::View3DHost& view, IDispatch* object);

/// Memory that the process has, in bytes.
double residentBytes();

/// A frame after the camera has moved.
void drawOrbitFrame(const test::View3DHost& view);

}  // namespace zyn::bench
