#pragma once

#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "view3d/NavigationHost.h"

namespace zyn::test {

/// Records what a navigation asks for, one line a call ("MouseDown 0 10,20"), and runs foreign code
/// that a test puts into a kind of call ("MouseDown").
class RecordingNavigationHost : public NavigationHost {
 public:
  std::vector<std::string> calls;
  std::map<std::string, std::function<void()>> handlers;
  bool selectables = false;
  bool cursor = false;
  PickRecords hits;

  /// The calls so far, which are then forgotten.
  std::vector<std::string> take() {
    std::vector<std::string> taken;
    taken.swap(calls);
    return taken;
  }

  int count(const std::string& kind) const {
    int found = 0;
    for (const std::string& call : calls) {
      found += call.substr(0, call.find(' ')) == kind ? 1 : 0;
    }
    return found;
  }

  void fireMouseDown(MouseButton button, PixelPoint at) noexcept override {
    record("MouseDown", static_cast<int>(button), at);
  }
  void fireMouseUp(MouseButton button, PixelPoint at) noexcept override {
    record("MouseUp", static_cast<int>(button), at);
  }
  void fireMouseMove(int key, PixelPoint at) noexcept override { record("MouseMove", key, at); }
  void fireMouseSelection(int key, PixelPoint at, const Names& names) noexcept override {
    record("MouseSelection", key, at, names);
  }
  void fireMouseOn(int key, PixelPoint at, const Names& names) noexcept override {
    record("MouseOn", key, at, names);
  }
  void fireWindowSelection(int key, const SelectionRectangle& rectangle,
                           const Names& names) noexcept override {
    record("WindowSelection", key, rectangle, names);
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
    record("pickWithin", rectangle);
    return hits;
  }

 private:
  static void write(std::ostream& out, int value) { out << value; }
  static void write(std::ostream& out, PixelPoint at) { out << at.x << ',' << at.y; }
  static void write(std::ostream& out, const Names& names) {
    out << '{';
    for (std::size_t i = 0; i < names.size(); ++i) {
      out << (i == 0 ? "" : ",") << names[i];
    }
    out << '}';
  }
  static void write(std::ostream& out, const SelectionRectangle& r) {
    out << r.xMin << ':' << r.xMax << ',' << r.yMin << ':' << r.yMax << ',' << r.directionX << ','
        << r.directionY;
  }

  template <class... Details>
  void record(const std::string& kind, const Details&... details) {
    std::ostringstream line;
    line << kind;
    ((line << ' ', write(line, details)), ...);
    calls.push_back(line.str());
    if (const auto found = handlers.find(kind); found != handlers.end()) {
      const auto handler = found->second;  // it may replace itself
      handler();
    }
  }
};

}  // namespace zyn::test
