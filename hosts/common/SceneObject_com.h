#pragma once

#include "ZYNMODELEGEOM.h"
#include "common/ComObject_com.h"

namespace zyn::host {

/// A host's own object in a scene: shows nothing and takes no room unless a derived class has it
/// otherwise.
class SceneObject : public NumberedDispatch<IDispatch, IGLDraw> {
 public:
  STDMETHODIMP Draw3D(int) noexcept override { return S_OK; }
  STDMETHODIMP Draw2D(int) noexcept override { return S_OK; }
  STDMETHODIMP GetBox2D(IDispatch** box) noexcept override { return noBox(box); }
  STDMETHODIMP GetBox3D(IDispatch** box) noexcept override { return noBox(box); }
  STDMETHODIMP GetParam(IDispatch*, double* value) noexcept override {
    if (value == nullptr) {
      return E_POINTER;
    }
    *value = -1.0;
    return S_OK;
  }

 private:
  static HRESULT noBox(IDispatch** box) {
    if (box == nullptr) {
      return E_POINTER;
    }
    *box = nullptr;
    return S_OK;
  }
};

}  // namespace zyn::host
