#pragma once

#include <sstream>
#include <string>

#include "support/CallRecorder.h"
#include "view2d/Mouse2D.h"

namespace zyn::test {

/// Records what the mouse of a graph asks for.
class RecordingMouseHost2D : public MouseHost2D, public CallRecorder {
 public:
  bool activeTrace = false;
  bool selectables = false;
  bool cursor = false;
  PickRecords hits;

  void fireMouseDown(MouseButton button, const Point& at) noexcept override {
    record("MouseDown", static_cast<int>(button), at);
  }
  void fireMouseUp(MouseButton button, const Point& at) noexcept override {
    record("MouseUp", static_cast<int>(button), at);
  }
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
  PickRecords pickWithin(const RubberBand& band) noexcept override {
    record("pickWithin", band.press, band.current);
    return hits;
  }

 private:
  static std::string text(const Rect2& r) {
    std::ostringstream out;
    out << r.xMin << ':' << r.xMax << ',' << r.yMin << ':' << r.yMax;
    return out.str();
  }
};

}  // namespace zyn::test
