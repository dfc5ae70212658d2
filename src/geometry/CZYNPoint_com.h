#pragma once

#include "ZYNMODELEGEOM.h"
#include "com/ComClass_com.h"
#include "core/Point.h"
#include "geometry/StoredNumber_com.h"

namespace zyn {

/// A point in space, model units, the origin at first.
class CZYNPoint final : public ComClass<CZYNPoint, Dual<IZYNPoint>> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNModeleGeom.Point";

  STDMETHODIMP get_x(double* pVal) noexcept override { return getNumber(*this, pVal, point_.x); }
  STDMETHODIMP put_x(double newVal) noexcept override { return putNumber(*this, point_.x, newVal); }

  STDMETHODIMP get_y(double* pVal) noexcept override { return getNumber(*this, pVal, point_.y); }
  STDMETHODIMP put_y(double newVal) noexcept override { return putNumber(*this, point_.y, newVal); }

  STDMETHODIMP get_z(double* pVal) noexcept override { return getNumber(*this, pVal, point_.z); }
  STDMETHODIMP put_z(double newVal) noexcept override { return putNumber(*this, point_.z, newVal); }

  STDMETHODIMP setCoordonnees(double x, double y, double z) noexcept override {
    return automation(*this, [&] {
      point_.x = x;
      point_.y = y;
      point_.z = z;
    });
  }

 private:
  Point point_;
};

}  // namespace zyn
