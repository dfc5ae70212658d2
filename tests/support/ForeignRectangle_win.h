#pragma once

#include <functional>

#include "support/ForeignBase_win.h"

namespace zyn::test {

/// A rectangle made by the host itself, so that its references can be counted. Its extents follow
/// from its bounds until a test sets them apart.
class ForeignRectangle final : public ForeignBase<ForeignRectangle, IZYNRectangle> {
 public:
  ForeignRectangle(double xMin, double xMax, double yMin, double yMax) {
    setBornes(xMin, xMax, yMin, yMax);
  }

  /// Called by every get, whose answer is its result.
  std::function<HRESULT()> onGet;

  void setExtents(double width, double height) {
    width_ = width;
    height_ = height;
  }

  STDMETHODIMP get_XMin(double* value) override { return give(xMin_, value); }
  STDMETHODIMP put_XMin(double value) override { return take(value, xMin_); }
  STDMETHODIMP get_XMax(double* value) override { return give(xMax_, value); }
  STDMETHODIMP put_XMax(double value) override { return take(value, xMax_); }
  STDMETHODIMP get_YMin(double* value) override { return give(yMin_, value); }
  STDMETHODIMP put_YMin(double value) override { return take(value, yMin_); }
  STDMETHODIMP get_YMax(double* value) override { return give(yMax_, value); }
  STDMETHODIMP put_YMax(double value) override { return take(value, yMax_); }
  STDMETHODIMP get_Largeur(double* value) override { return give(width_, value); }
  STDMETHODIMP get_Hauteur(double* value) override { return give(height_, value); }
  STDMETHODIMP setBornes(double xMin, double xMax, double yMin, double yMax) override {
    xMin_ = xMin;
    xMax_ = xMax;
    yMin_ = yMin;
    yMax_ = yMax;
    setExtents(xMax - xMin, yMax - yMin);
    return S_OK;
  }

 private:
  ~ForeignRectangle() override = default;
  friend ForeignBase;

  HRESULT give(double from, double* to) const {
    const HRESULT result = onGet ? onGet() : S_OK;
    if (SUCCEEDED(result)) *to = from;
    return result;
  }
  HRESULT take(double from, double& to) {
    to = from;
    setExtents(xMax_ - xMin_, yMax_ - yMin_);
    return S_OK;
  }

  double xMin_ = 0;
  double xMax_ = 0;
  double yMin_ = 0;
  double yMax_ = 0;
  double width_ = 0;
  double height_ = 0;
};

}  // namespace zyn::test
