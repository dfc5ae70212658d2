#pragma once

#include "com/ComClass_com.h"
#include "com/properties_com.h"
#include "contract/CompanionObjects_com.h"
#include "contract/ISceneObject_com.h"

namespace zyn {

/// Base of the scene objects that have no parameters: what they all answer in the same way. `Main`,
/// a Dual, is the interface by which hosts know them, their boxes are those that modelBounds tells.
template <class Object, class Main, class... More>
class SceneObject : public ComClass<Object, Main, Extending<ISceneObject, IGLDraw>, More...> {
 public:
  STDMETHODIMP GetBox2D(IDispatch** box) noexcept final {
    return automation(self(), [&] { return giveBox(box, makeBox2D); });
  }
  STDMETHODIMP GetBox3D(IDispatch** box) noexcept final {
    return automation(self(), [&] { return giveBox(box, makeBox3D); });
  }
  STDMETHODIMP GetParam(IDispatch*, double* value) noexcept final {
    return automation(self(), [&] { return give(value, -1.0); });
  }

  IDispatch* STDMETHODCALLTYPE hostInterface() noexcept final {
    return this->isAggregated() ? nullptr : static_cast<Main*>(this);
  }
  SceneWatch& STDMETHODCALLTYPE watch() noexcept final { return watch_; }

 protected:
  SceneObject() = default;
  ~SceneObject() = default;

  /// The body of a member that changes what is drawn anew each time, and tells so.
  template <class Body>
  HRESULT changeLook(Body body) noexcept {
    return automation(self(), [&] {
      body();
      watch_.tell(SceneChange::kLook);
    });
  }

  SceneWatch watch_;

 private:
  /// An empty object has no box.
  HRESULT giveBox(IDispatch** box, decltype(makeBox2D)& make) {
    const std::optional<Box3> bounds = this->modelBounds();
    return bounds ? make(*bounds, box) : give(box, nullptr);
  }

  Object& self() { return static_cast<Object&>(*this); }
};

}  // namespace zyn
