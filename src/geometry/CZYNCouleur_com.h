#pragma once

#include "ZYNMODELEGEOM.h"
#include "com/ComClass_com.h"
#include "geometry/StoredNumber_com.h"

namespace zyn {

/// A colour, its components meant to lie in 0..1 but kept as given; black at first.
class CZYNCouleur final : public ComClass<CZYNCouleur, Dual<IZYNCouleur>> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNModeleGeom.Couleur";

  STDMETHODIMP get_R(double* pVal) noexcept override { return getNumber(*this, pVal, red_); }
  STDMETHODIMP put_R(double newVal) noexcept override { return putNumber(*this, red_, newVal); }

  STDMETHODIMP get_G(double* pVal) noexcept override { return getNumber(*this, pVal, green_); }
  STDMETHODIMP put_G(double newVal) noexcept override { return putNumber(*this, green_, newVal); }

  STDMETHODIMP get_B(double* pVal) noexcept override { return getNumber(*this, pVal, blue_); }
  STDMETHODIMP put_B(double newVal) noexcept override { return putNumber(*this, blue_, newVal); }

  STDMETHODIMP setCouleur(double R, double G, double B) noexcept override {
    return automation(*this, [&] {
      red_ = R;
      green_ = G;
      blue_ = B;
    });
  }

 private:
  double red_ = 0.0;
  double green_ = 0.0;
  double blue_ = 0.0;
};

}  // namespace zyn
