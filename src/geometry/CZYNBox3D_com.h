#pragma once

#include "ZYNMODELEGEOM.h"
#include "com/ComClass_com.h"
#include "core/Box3.h"
#include "geometry/StoredNumber_com.h"

namespace zyn {

/// A bounding box in space, model units, all 0 at first.
class CZYNBox3D final : public ComClass<CZYNBox3D, Dual<IZYNBox3D>> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNModeleGeom.Box3D";

  STDMETHODIMP get_XMin(double* pVal) noexcept override {
    return getNumber(*this, pVal, bounds_.xMin);
  }
  STDMETHODIMP put_XMin(double newVal) noexcept override {
    return putNumber(*this, bounds_.xMin, newVal);
  }

  STDMETHODIMP get_XMax(double* pVal) noexcept override {
    return getNumber(*this, pVal, bounds_.xMax);
  }
  STDMETHODIMP put_XMax(double newVal) noexcept override {
    return putNumber(*this, bounds_.xMax, newVal);
  }

  STDMETHODIMP get_YMin(double* pVal) noexcept override {
    return getNumber(*this, pVal, bounds_.yMin);
  }
  STDMETHODIMP put_YMin(double newVal) noexcept override {
    return putNumber(*this, bounds_.yMin, newVal);
  }

  STDMETHODIMP get_YMax(double* pVal) noexcept override {
    return getNumber(*this, pVal, bounds_.yMax);
  }
  STDMETHODIMP put_YMax(double newVal) noexcept override {
    return putNumber(*this, bounds_.yMax, newVal);
  }

  STDMETHODIMP get_ZMin(double* pVal) noexcept override {
    return getNumber(*this, pVal, bounds_.zMin);
  }
  STDMETHODIMP put_ZMin(double newVal) noexcept override {
    return putNumber(*this, bounds_.zMin, newVal);
  }

  STDMETHODIMP get_ZMax(double* pVal) noexcept override {
    return getNumber(*this, pVal, bounds_.zMax);
  }
  STDMETHODIMP put_ZMax(double newVal) noexcept override {
    return putNumber(*this, bounds_.zMax, newVal);
  }

  STDMETHODIMP get_DX(double* pVal) noexcept override {
    return automation(*this, [&] { return give(pVal, bounds_.extents().x); });
  }
  STDMETHODIMP get_DY(double* pVal) noexcept override {
    return automation(*this, [&] { return give(pVal, bounds_.extents().y); });
  }
  STDMETHODIMP get_DZ(double* pVal) noexcept override {
    return automation(*this, [&] { return give(pVal, bounds_.extents().z); });
  }

 private:
  Box3 bounds_;
};

}  // namespace zyn
