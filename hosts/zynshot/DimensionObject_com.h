#pragma once

#include <wrl/client.h>

#include <vector>

#include "ZYNVUE.h"
#include "common/SceneObject_com.h"

namespace zyn::shot {

/// Dimensions as a scene takes them: the component draws a dimension only when it is told to, into
/// the context that is current then, which is the scene's whenever it draws this object.
class DimensionObject final : public host::SceneObject {
 public:
  explicit DimensionObject(std::vector<Microsoft::WRL::ComPtr<IZYNGLCote>> dimensions)
      : dimensions_(std::move(dimensions)) {}

  STDMETHODIMP Draw3D(int mode) noexcept override;

 private:
  std::vector<Microsoft::WRL::ComPtr<IZYNGLCote>> dimensions_;
};

}  // namespace zyn::shot
