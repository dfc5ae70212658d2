#include "zynshot/DimensionObject_com.h"

namespace zyn::shot {

STDMETHODIMP DimensionObject::Draw3D(int mode) noexcept {
  for (const auto& dimension : dimensions_) {
    const HRESULT drawn = mode < 0 ? dimension->DrawForGLSelection() : dimension->Draw();
    if (FAILED(drawn)) {
      return drawn;
    }
  }
  return S_OK;
}

}  // namespace zyn::shot
