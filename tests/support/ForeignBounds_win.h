#pragma once

#include <functional>

#include "support/ForeignBase_win.h"

namespace zyn::test {

/// What the boxes and rectangles have in common that the host makes itself, so that their
/// references can be counted.
template <class Derived, class Interface>
class ForeignBounds : public ForeignBase<Derived, Interface> {
 public:
  /// Called by every get, whose answer is its result.
  std::function<HRESULT()> onGet;

  STDMETHODIMP get_XMin(double* value) override { return give(xMin_, value); }
  STDMETHODIMP put_XMin(double value) override { return take(value, xMin_); }
  STDMETHODIMP get_XMax(double* value) override { return give(xMax_, value); }
  STDMETHODIMP put_XMax(double value) override { return take(value, xMax_); }
  STDMETHODIMP get_YMin(double* value) override { return give(yMin_, value); }
  STDMETHODIMP put_YMin(double value) override { return take(value, yMin_); }
  STDMETHODIMP get_YMax(double* value) override { return give(yMax_, value); }
  STDMETHODIMP put_YMax(double value) override { return take(value, yMax_); }

 protected:
  ForeignBounds(double xMin, double xMax, double yMin, double yMax)
      : xMin_(xMin), xMax_(xMax), yMin_(yMin), yMax_(yMax) {}
  ~ForeignBounds() override = default;

  HRESULT give(double from, double* to) const {
    const auto action = onGet;  // it may replace itself
    const HRESULT result = action ? action() : S_OK;
    if (SUCCEEDED(result)) *to = from;
    return result;
  }
  HRESULT take(double from, double& to) {
    to = from;
    boundsChanged();
    return S_OK;
  }
  virtual void boundsChanged() {}

  double xMin_, xMax_, yMin_, yMax_;
};

class ForeignBox final : public ForeignBounds<ForeignBox, IZYNBox3D> {
 public:
  ForeignBox(double xMin, double xMax, double yMin, double yMax, double zMin, double zMax)
      : ForeignBounds(xMin, xMax, yMin, yMax), zMin_(zMin), zMax_(zMax) {}

  STDMETHODIMP get_ZMin(double* value) override { return give(zMin_, value); }
  STDMETHODIMP put_ZMin(double value) override { return take(value, zMin_); }
  STDMETHODIMP get_ZMax(double* value) override { return give(zMax_, value); }
  STDMETHODIMP put_ZMax(double value) override { return take(value, zMax_); }
  STDMETHODIMP get_DX(double* value) override { return give(xMax_ - xMin_, value); }
  STDMETHODIMP get_DY(double* value) override { return give(yMax_ - yMin_, value); }
  STDMETHODIMP get_DZ(double* value) override { return give(zMax_ - zMin_, value); }

 private:
  ~ForeignBox() override = default;
  friend ForeignBase;

  double zMin_, zMax_;
};

/// Its extents follow from its bounds until a test sets them apart.
class ForeignRectangle final : public ForeignBounds<ForeignRectangle, IZYNRectangle> {
 public:
  ForeignRectangle(double xMin, double xMax, double yMin, double yMax)
      : ForeignBounds(xMin, xMax, yMin, yMax) {
    boundsChanged();
  }

  void setExtents(double width, double height) {
    width_ = width;
    height_ = height;
  }

  STDMETHODIMP get_Largeur(double* value) override { return give(width_, value); }
  STDMETHODIMP get_Hauteur(double* value) override { return give(height_, value); }
  STDMETHODIMP setBornes(double xMin, double xMax, double yMin, double yMax) override {
    xMin_ = xMin;
    xMax_ = xMax;
    yMin_ = yMin;
    yMax_ = yMax;
    boundsChanged();
    return S_OK;
  }

 private:
  ~ForeignRectangle() override = default;
  friend ForeignBase;

  void boundsChanged() override { setExtents(xMax_ - xMin_, yMax_ - yMin_); }

  double width_ = 0;
  double height_ = 0;
};

}  // namespace zyn::test
