#pragma once

#include <functional>

#include "support/ForeignBase_win.h"

namespace zyn::test {

/// A 3D box made by the host itself, so that its references can be counted.
class ForeignBox final : public ForeignBase<ForeignBox, IZYNBox3D> {
 public:
  ForeignBox(double xMin, double xMax, double yMin, double yMax, double zMin, double zMax)
      : xMin_(xMin), xMax_(xMax), yMin_(yMin), yMax_(yMax), zMin_(zMin), zMax_(zMax) {}

  STDMETHODIMP get_XMin(double* value) override { return give(xMin_, value); }
  STDMETHODIMP put_XMin(double value) override { return take(value, xMin_); }
  STDMETHODIMP get_XMax(double* value) override { return give(xMax_, value); }
  STDMETHODIMP put_XMax(double value) override { return take(value, xMax_); }
  STDMETHODIMP get_YMin(double* value) override { return give(yMin_, value); }
  STDMETHODIMP put_YMin(double value) override { return take(value, yMin_); }
  STDMETHODIMP get_YMax(double* value) override { return give(yMax_, value); }
  STDMETHODIMP put_YMax(double value) override { return take(value, yMax_); }
  STDMETHODIMP get_ZMin(double* value) override { return give(zMin_, value); }
  STDMETHODIMP put_ZMin(double value) override { return take(value, zMin_); }
  STDMETHODIMP get_ZMax(double* value) override { return give(zMax_, value); }
  STDMETHODIMP put_ZMax(double value) override { return take(value, zMax_); }
  STDMETHODIMP get_DX(double* value) override { return give(xMax_ - xMin_, value); }
  STDMETHODIMP get_DY(double* value) override { return give(yMax_ - yMin_, value); }
  STDMETHODIMP get_DZ(double* value) override { return give(zMax_ - zMin_, value); }

  /// Called before each get.
  std::function<void()> onRead;

  /// From now on every get fails with this code.
  void failWith(HRESULT result) { result_ = result; }

 private:
  ~ForeignBox() override = default;
  friend ForeignBase;

  HRESULT give(double from, double* to) const {
    if (const auto action = onRead) action();
    if (SUCCEEDED(result_)) *to = from;
    return result_;
  }
  static HRESULT take(double from, double& to) {
    to = from;
    return S_OK;
  }

  HRESULT result_ = S_OK;
  double xMin_, xMax_, yMin_, yMax_, zMin_, zMax_;
};

}  // namespace zyn::test
