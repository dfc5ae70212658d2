#pragma once

#include <sstream>
#include <string>

#include "support/CallRecorder.h"
#include "view3d/Mouse3D.h"

namespace zyn::test {

/// Records what a navigation asks for.
class RecordingMouseHost3D : public MouseHost3D, public CallRecorder {
 public:
  bool selectables = false;
  bool cursor = false;
  PickRecords hits;

  void fireMouseDown(MouseButton button, PixelPoint at) noexcept override {
    record("MouseDown", static_cast<int>(button), at);
  }
  void fireMouseUp(MouseButton button, PixelPoint at) noexcept override {
    record("MouseUp", static_cast<int>(button), at);
  }
  void fireMouseMove(int key, PixelPoint at) noexcept override { record("MouseMove", key, at); }
  void fireMouseSelection(int key, PixelPoint at, const PickedNames& names) noexcept override {
    record("MouseSelection", key, at, names);
  }
  void fireMouseOn(int key, PixelPoint at, const PickedNames& names) noexcept override {
    record("MouseOn", key, at, names);
  }
  void fireWindowSelection(int key, const SelectionRectangle& rectangle,
                           const PickedNames& names) noexcept override {
    record("WindowSelection", key, text(rectangle), names);
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
  PickRecords pickWithin(const SelectionRectangle& rectangle) noexcept override {
    record("pickWithin", text(rectangle));
    return hits;
  }

 private:
  static std::string text(const SelectionRectangle& r) {
    std::ostringstream out;
    out << r.xMin << ':' << r.xMax << ',' << r.yMin << ':' << r.yMax << ',' << r.directionX << ','
        << r.directionY;
    return out.str();
  }
};

}  // namespace zyn::test
