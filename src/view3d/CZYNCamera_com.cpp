#include "view3d/CZYNCamera_com.h"

#include <limits>
#include <memory>
#include <string>

#include "com/NumericArrayVariant_com.h"
#include "com/TextValues_com.h"
#include "com/arguments_com.h"
#include "com/askFor_com.h"
#include "com/automation_com.h"
#include "com/properties_com.h"
#include "view3d/CameraText.h"

namespace zyn {

namespace {

/// The texts of cameras and of what is wrong with them are plain ASCII, except for what a host has
/// put into them.
std::wstring widened(const std::string& text) {
  std::wstring wide;
  for (const char c : text) {
    wide += static_cast<unsigned char>(c);
  }
  return wide;
}

/// What is beyond a byte is no part of a camera, and is told as "?".
std::string narrowed(BSTR text) {
  std::string narrow;
  for (UINT i = 0; i < SysStringLen(text); ++i) {
    constexpr wchar_t kLast = 0x7E;
    narrow += text[i] <= kLast ? static_cast<char>(text[i]) : '?';
  }
  return narrow;
}

CameraValue parsed(const wchar_t* name, BSTR text) {
  try {
    return parseCamera(narrowed(text));
  } catch (const CameraTextError& error) {
    throw badArgument(name, widened(error.what()));
  }
}

double atLeastZero(const wchar_t* name, double value) {
  return inRange(name, value, 0.0, std::numeric_limits<double>::max());
}

}  // namespace

CameraValue cameraIn(const wchar_t* name, IDispatch* argument) {
  const auto camera = askFor<IZYNCamera>(argument);
  if (!camera) {
    throw badArgument(name, argument ? L"the object is no camera" : L"there is no camera");
  }
  BSTR text = nullptr;
  const HRESULT answer = camera->get_Texte(&text);
  const std::unique_ptr<OLECHAR, decltype(&SysFreeString)> owned(text, SysFreeString);
  throwIfFailed(answer, camera.Get(), __uuidof(IZYNCamera));
  return parsed(name, text);
}

void requireSight(const wchar_t* name, const CameraValue& camera) {
  if (const auto fault = faultOf(camera)) {
    throw badArgument(name, L"nothing would be seen any more. " + widened(*fault));
  }
}

HRESULT giveCamera(IDispatch** place, const std::optional<CameraValue>& value) {
  if (!place) {
    return E_POINTER;
  }
  *place = nullptr;
  return value ? makeObject<CZYNCamera>(*value).CopyTo(place) : S_OK;
}

STDMETHODIMP CZYNCamera::setOeil(double x, double y, double z) noexcept {
  return automation(*this, [&] {
    value_.eye = {finite(L"x", x), finite(L"y", y), finite(L"z", z)};
  });
}

STDMETHODIMP CZYNCamera::setCible(double x, double y, double z) noexcept {
  return automation(*this, [&] {
    value_.target = {finite(L"x", x), finite(L"y", y), finite(L"z", z)};
  });
}

STDMETHODIMP CZYNCamera::setHaut(double x, double y, double z) noexcept {
  return automation(*this, [&] {
    const Vecteur up(finite(L"x", x), finite(L"y", y), finite(L"z", z));
    if (!hasDirection(up)) {
      throw badArgument(L"x, y, z", L"together they have no direction");
    }
    value_.up = up;
  });
}

STDMETHODIMP CZYNCamera::getOeil(VARIANT* Point) noexcept {
  return automation(*this, [&] {
    return giveNumbers(Point, {value_.eye.x, value_.eye.y, value_.eye.z});
  });
}

STDMETHODIMP CZYNCamera::getCible(VARIANT* Point) noexcept {
  return automation(*this, [&] {
    return giveNumbers(Point, {value_.target.x, value_.target.y, value_.target.z});
  });
}

STDMETHODIMP CZYNCamera::getHaut(VARIANT* Direction) noexcept {
  return automation(*this, [&] {
    return giveNumbers(Direction, {value_.up.x, value_.up.y, value_.up.z});
  });
}

HRESULT CZYNCamera::giveValue(double* place, double value) noexcept {
  return automation(*this, [&] { return give(place, value); });
}

STDMETHODIMP CZYNCamera::get_OeilX(double* pVal) noexcept { return giveValue(pVal, value_.eye.x); }

STDMETHODIMP CZYNCamera::get_OeilY(double* pVal) noexcept { return giveValue(pVal, value_.eye.y); }

STDMETHODIMP CZYNCamera::get_OeilZ(double* pVal) noexcept { return giveValue(pVal, value_.eye.z); }

STDMETHODIMP CZYNCamera::get_CibleX(double* pVal) noexcept {
  return giveValue(pVal, value_.target.x);
}

STDMETHODIMP CZYNCamera::get_CibleY(double* pVal) noexcept {
  return giveValue(pVal, value_.target.y);
}

STDMETHODIMP CZYNCamera::get_CibleZ(double* pVal) noexcept {
  return giveValue(pVal, value_.target.z);
}

STDMETHODIMP CZYNCamera::get_HautX(double* pVal) noexcept { return giveValue(pVal, value_.up.x); }

STDMETHODIMP CZYNCamera::get_HautY(double* pVal) noexcept { return giveValue(pVal, value_.up.y); }

STDMETHODIMP CZYNCamera::get_HautZ(double* pVal) noexcept { return giveValue(pVal, value_.up.z); }

STDMETHODIMP CZYNCamera::get_Largeur(double* pVal) noexcept {
  return giveValue(pVal, value_.width);
}

STDMETHODIMP CZYNCamera::put_Largeur(double newVal) noexcept {
  return automation(*this, [&] { value_.width = positive(L"Largeur", newVal); });
}

STDMETHODIMP CZYNCamera::get_Hauteur(double* pVal) noexcept {
  return giveValue(pVal, value_.height);
}

STDMETHODIMP CZYNCamera::put_Hauteur(double newVal) noexcept {
  return automation(*this, [&] { value_.height = positive(L"Hauteur", newVal); });
}

STDMETHODIMP CZYNCamera::get_Perspective(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, value_.perspective); });
}

STDMETHODIMP CZYNCamera::put_Perspective(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] { value_.perspective = isOn(newVal); });
}

STDMETHODIMP CZYNCamera::get_AngleOuverture(double* pVal) noexcept {
  return giveValue(pVal, value_.openingAngle);
}

STDMETHODIMP CZYNCamera::put_AngleOuverture(double newVal) noexcept {
  return automation(*this, [&] {
    value_.openingAngle =
        inRange(L"AngleOuverture", newVal, CameraValue::kSmallestAngle, CameraValue::kLargestAngle);
  });
}

STDMETHODIMP CZYNCamera::get_Profondeur(double* pVal) noexcept {
  return giveValue(pVal, value_.depth);
}

STDMETHODIMP CZYNCamera::put_Profondeur(double newVal) noexcept {
  return automation(*this, [&] { value_.depth = atLeastZero(L"Profondeur", newVal); });
}

STDMETHODIMP CZYNCamera::get_Texte(BSTR* pVal) noexcept {
  return automation(*this, [&] { return giveText(pVal, widened(textOf(value_))); });
}

STDMETHODIMP CZYNCamera::put_Texte(BSTR newVal) noexcept {
  return automation(*this, [&] { value_ = parsed(L"Texte", newVal); });
}

STDMETHODIMP CZYNCamera::Copie(IDispatch** Camera) noexcept {
  return automation(*this, [&] { return giveCamera(Camera, value_); });
}

STDMETHODIMP CZYNCamera::Interpole(IDispatch* Autre, double t, IDispatch** Camera) noexcept {
  return automation(*this, [&] {
    if (!Camera) {
      return E_POINTER;
    }
    *Camera = nullptr;
    const CameraValue other = cameraIn(L"Autre", Autre);
    inRange(L"t", t, 0.0, 1.0);
    if (const auto fault = faultOf(value_)) {
      throw Failure(E_UNEXPECTED, L"Nothing can be seen with this camera. " + widened(*fault));
    }
    return giveCamera(Camera, between(value_, other, t));
  });
}

}  // namespace zyn
