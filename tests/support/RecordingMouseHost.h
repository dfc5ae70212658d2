#pragma once

#include <sstream>
#include <string>

#include "support/CallRecorder.h"
#include "view2d/Mouse2D.h"
#include "view3d/Mouse3D.h"

namespace zyn::test {

/// Records what the mouse of a view asks for. `Place` is how the view's events tell where it is.
template <class Host, class Place>
class RecordingMouseHost : public Host, public CallRecorder {
 public:
  bool selectables = false;
  bool cursor = false;
  PickRecords hits;

  void fireMouseDown(MouseButton button, Place at) noexcept override {
    record("MouseDown", static_cast<int>(button), at);
  }
  void fireMouseUp(MouseButton button, Place at) noexcept override {
    record("MouseUp", static_cast<int>(button), at);
  }
  void captureMouse() noexcept override { record("capture"); }
  void releaseMouse() noexcept override { record("release"); }
  void trackMouseLeave() noexcept override { record("track"); }
  void repaint() noexcept override { record("repaint"); }
  bool hasSelectables() const noexcept override { return selectables; }
  bool drawsCursor() const noexcept override { return cursor; }
  PickRecords pickAt(PixelPoint at) noexcept override {
    record("pick", at);
    return hits;
  }

 protected:
  template <class Bounds>
  static std::string text(const Bounds& r) {
    std::ostringstream out;
    out << r.xMin << ':' << r.xMax << ',' << r.yMin << ':' << r.yMax;
    return out.str();
  }
};

class RecordingMouseHost2D : public RecordingMouseHost<MouseHost2D, const Point&> {
 public:
  bool activeTrace = false;

  void fireMouseMove(const Point& at) noexcept override { record("MouseMove", at); }
  void fireMouseLeave() noexcept override { record("MouseLeave"); }
  void fireMouseSelection(const PickedNames& names) noexcept override {
    record("MouseSelection", names);
  }
  void fireMouseSelection2(int key, const Point& at, const PickedNames& names) noexcept override {
    record("MouseSelection2", key, at, names);
  }
  void fireMouseSelectionDblClick(const PickedNames& names) noexcept override {
    record("MouseSelectionDblClick", names);
  }
  void fireMouseOn(const PickedNames& names) noexcept override { record("MouseOn", names); }
  void fireMouseOn2(int key, const Point& at, const PickedNames& names) noexcept override {
    record("MouseOn2", key, at, names);
  }
  void fireWindowSelection(int key, const Rect2& rectangle,
                           const PickedNames& names) noexcept override {
    record("WindowSelection", key, text(rectangle), names);
  }
  bool askNearest(const Point& at) noexcept override {
    record("nearest", at);
    return activeTrace;
  }
  PickRecords pickWithin(const RubberBand& band) noexcept override {
    record("pickWithin", band.press, band.current);
    return hits;
  }
};

class RecordingMouseHost3D : public RecordingMouseHost<MouseHost3D, PixelPoint> {
 public:
  std::optional<Point> surface;

  void fireMouseMove(int key, PixelPoint at) noexcept override { record("MouseMove", key, at); }
  void fireMouseSelection(int key, PixelPoint at, const PickedNames& names) noexcept override {
    record("MouseSelection", key, at, names);
  }
  void fireMouseOn(int key, PixelPoint at, const PickedNames& names) noexcept override {
    record("MouseOn", key, at, names);
  }
  void fireWindowSelection(int key, const SelectionRectangle& rectangle,
                           const PickedNames& names) noexcept override {
    record("WindowSelection", key, directed(rectangle), names);
  }
  std::optional<Point> surfaceAt(PixelPoint at) noexcept override {
    record("surface", at);
    return surface;
  }
  PickRecords pickWithin(const SelectionRectangle& rectangle) noexcept override {
    record("pickWithin", directed(rectangle));
    return hits;
  }

 private:
  static std::string directed(const SelectionRectangle& r) {
    std::ostringstream out;
    out << text(r) << ',' << r.directionX << ',' << r.directionY;
    return out.str();
  }
};

}  // namespace zyn::test
