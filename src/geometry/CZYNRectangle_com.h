#pragma once

#include "ZYNMODELEGEOM.h"
#include "com/ComClass_com.h"
#include "geometry/StoredNumber_com.h"

namespace zyn {

/// A rectangle in the plane, given by its bounds in model units, all 0 at first. Nothing keeps a
/// lower bound below the upper one.
class CZYNRectangle final : public ComClass<CZYNRectangle, Dual<IZYNRectangle>> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNModeleGeom.Rectangle";

  STDMETHODIMP get_XMin(double* pVal) noexcept override { return getNumber(*this, pVal, xMin_); }
  STDMETHODIMP put_XMin(double newVal) noexcept override { return putNumber(*this, xMin_, newVal); }

  STDMETHODIMP get_XMax(double* pVal) noexcept override { return getNumber(*this, pVal, xMax_); }
  STDMETHODIMP put_XMax(double newVal) noexcept override { return putNumber(*this, xMax_, newVal); }

  STDMETHODIMP get_YMin(double* pVal) noexcept override { return getNumber(*this, pVal, yMin_); }
  STDMETHODIMP put_YMin(double newVal) noexcept override { return putNumber(*this, yMin_, newVal); }

  STDMETHODIMP get_YMax(double* pVal) noexcept override { return getNumber(*this, pVal, yMax_); }
  STDMETHODIMP put_YMax(double newVal) noexcept override { return putNumber(*this, yMax_, newVal); }

  STDMETHODIMP get_Largeur(double* pVal) noexcept override {
    return automation(*this, [&] { return give(pVal, xMax_ - xMin_); });
  }
  STDMETHODIMP get_Hauteur(double* pVal) noexcept override {
    return automation(*this, [&] { return give(pVal, yMax_ - yMin_); });
  }

  STDMETHODIMP setBornes(double XMin, double XMax, double YMin, double YMax) noexcept override {
    return automation(*this, [&] {
      xMin_ = XMin;
      xMax_ = XMax;
      yMin_ = YMin;
      yMax_ = YMax;
    });
  }

 private:
  double xMin_ = 0.0;
  double xMax_ = 0.0;
  double yMin_ = 0.0;
  double yMax_ = 0.0;
};

}  // namespace zyn
