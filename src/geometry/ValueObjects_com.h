#pragma once

#include "ZYNMODELEGEOM.h"
#include "com/ComClass_com.h"
#include "com/automation_com.h"
#include "com/properties_com.h"
#include "core/Box3.h"

namespace zyn {

// Objects that hold numbers: each takes any value, and is all 0 at first.

/// A class whose properties are numbers.
template <class Class, class Interface>
class NumbersClass : public ComClass<Class, Dual<Interface>> {
 protected:
  /// The get of a property: E_POINTER without a place for the value.
  HRESULT getNumber(double* place, double value) noexcept {
    return automation(self(), [&] { return give(place, value); });
  }
  HRESULT putNumber(double& stored, double value) noexcept {
    return automation(self(), [&] { stored = value; });
  }
  Class& self() noexcept { return static_cast<Class&>(*this); }
};

/// A point in space, model units.
class CZYNPoint final : public NumbersClass<CZYNPoint, IZYNPoint> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNModeleGeom.Point";

  STDMETHODIMP get_x(double* pVal) noexcept override { return getNumber(pVal, point_.x); }
  STDMETHODIMP put_x(double newVal) noexcept override { return putNumber(point_.x, newVal); }
  STDMETHODIMP get_y(double* pVal) noexcept override { return getNumber(pVal, point_.y); }
  STDMETHODIMP put_y(double newVal) noexcept override { return putNumber(point_.y, newVal); }
  STDMETHODIMP get_z(double* pVal) noexcept override { return getNumber(pVal, point_.z); }
  STDMETHODIMP put_z(double newVal) noexcept override { return putNumber(point_.z, newVal); }

  STDMETHODIMP setCoordonnees(double x, double y, double z) noexcept override {
    return automation(*this, [&] { point_ = Point(x, y, z); });
  }

 private:
  Point point_;
};

/// A colour, its components meant to lie in 0..1 but kept as given.
class CZYNCouleur final : public NumbersClass<CZYNCouleur, IZYNCouleur> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNModeleGeom.Couleur";

  STDMETHODIMP get_R(double* pVal) noexcept override { return getNumber(pVal, red_); }
  STDMETHODIMP put_R(double newVal) noexcept override { return putNumber(red_, newVal); }
  STDMETHODIMP get_G(double* pVal) noexcept override { return getNumber(pVal, green_); }
  STDMETHODIMP put_G(double newVal) noexcept override { return putNumber(green_, newVal); }
  STDMETHODIMP get_B(double* pVal) noexcept override { return getNumber(pVal, blue_); }
  STDMETHODIMP put_B(double newVal) noexcept override { return putNumber(blue_, newVal); }

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

/// What has bounds in the plane, model units. Nothing keeps a lower bound below the upper one.
template <class Class, class Interface>
class BoundsClass : public NumbersClass<Class, Interface> {
 public:
  STDMETHODIMP get_XMin(double* pVal) noexcept override { return get(pVal, bounds_.xMin); }
  STDMETHODIMP put_XMin(double newVal) noexcept override { return put(bounds_.xMin, newVal); }
  STDMETHODIMP get_XMax(double* pVal) noexcept override { return get(pVal, bounds_.xMax); }
  STDMETHODIMP put_XMax(double newVal) noexcept override { return put(bounds_.xMax, newVal); }
  STDMETHODIMP get_YMin(double* pVal) noexcept override { return get(pVal, bounds_.yMin); }
  STDMETHODIMP put_YMin(double newVal) noexcept override { return put(bounds_.yMin, newVal); }
  STDMETHODIMP get_YMax(double* pVal) noexcept override { return get(pVal, bounds_.yMax); }
  STDMETHODIMP put_YMax(double newVal) noexcept override { return put(bounds_.yMax, newVal); }

 protected:
  HRESULT get(double* place, double value) noexcept { return this->getNumber(place, value); }
  HRESULT put(double& stored, double value) noexcept { return this->putNumber(stored, value); }

  Box3 bounds_;
};

/// A rectangle in the plane, given by its bounds.
class CZYNRectangle final : public BoundsClass<CZYNRectangle, IZYNRectangle> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNModeleGeom.Rectangle";

  STDMETHODIMP get_Largeur(double* pVal) noexcept override {
    return get(pVal, bounds_.extents().x);
  }
  STDMETHODIMP get_Hauteur(double* pVal) noexcept override {
    return get(pVal, bounds_.extents().y);
  }
  STDMETHODIMP setBornes(double XMin, double XMax, double YMin, double YMax) noexcept override {
    return automation(*this, [&] { bounds_ = {XMin, XMax, YMin, YMax}; });
  }
};

/// A bounding box in the plane.
class CZYNBox2D final : public BoundsClass<CZYNBox2D, IZYNBox2D> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNModeleGeom.Box2D";

  STDMETHODIMP get_DX(double* pVal) noexcept override { return get(pVal, bounds_.extents().x); }
  STDMETHODIMP get_DY(double* pVal) noexcept override { return get(pVal, bounds_.extents().y); }
};

/// A bounding box in space.
class CZYNBox3D final : public BoundsClass<CZYNBox3D, IZYNBox3D> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNModeleGeom.Box3D";

  STDMETHODIMP get_ZMin(double* pVal) noexcept override { return get(pVal, bounds_.zMin); }
  STDMETHODIMP put_ZMin(double newVal) noexcept override { return put(bounds_.zMin, newVal); }
  STDMETHODIMP get_ZMax(double* pVal) noexcept override { return get(pVal, bounds_.zMax); }
  STDMETHODIMP put_ZMax(double newVal) noexcept override { return put(bounds_.zMax, newVal); }

  STDMETHODIMP get_DX(double* pVal) noexcept override { return get(pVal, bounds_.extents().x); }
  STDMETHODIMP get_DY(double* pVal) noexcept override { return get(pVal, bounds_.extents().y); }
  STDMETHODIMP get_DZ(double* pVal) noexcept override { return get(pVal, bounds_.extents().z); }
};

}  // namespace zyn
