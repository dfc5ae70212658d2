#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "support/LateBinding_win.h"
#include "support/Scene_win.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {

/// One of the four that draw scenes: a view or a bitmap context, as a script knows it.
class Drawer {
 public:
  virtual ~Drawer() = default;
  Drawer(const Drawer&) = delete;
  Drawer& operator=(const Drawer&) = delete;

  virtual IDispatch* dispatch() = 0;
  /// Draws now: what the window shows, or the picture.
  virtual Image frame() = 0;
  /// The view; null for a bitmap context.
  virtual ViewHost* view() { return nullptr; }

  /// Looks at the whole scene along the z axis.
  virtual void lookAtPlane() {}

  void add(IDispatch* object) { require(call(L"Add", {object, 0L}).code(), "Add"); }
  CallResult call(const wchar_t* name, const std::vector<_variant_t>& arguments = {}) {
    return callMethod(dispatch(), name, arguments);
  }
  CallResult get(const wchar_t* name) { return getProperty(dispatch(), name); }
  CallResult put(const wchar_t* name, const _variant_t& value) {
    return putProperty(dispatch(), name, value);
  }

 protected:
  Drawer() = default;
};

/// A value of parameterised tests; `nameOf` names it.
struct DrawerClass {
  const char* name;
  const wchar_t* progId;
  bool isPlane;
  bool isView;
  /// With a window or a surface of the given size, and a background of kBackground. A plane shows
  /// a unit a pixel, from the lower left corner on.
  std::function<std::unique_ptr<Drawer>(int width, int height)> make;
};

const std::vector<DrawerClass>& drawerClasses();
/// Those that are views.
std::vector<DrawerClass> viewClasses();
inline std::string nameOf(const testing::TestParamInfo<DrawerClass>& chosen) {
  return chosen.param.name;
}
inline void PrintTo(const DrawerClass& chosen, std::ostream* out) { *out << chosen.name; }

}  // namespace zyn::test
