#include "objects/path/CZYNOutil_com.h"

#include "com/arguments_com.h"
#include "com/automation_com.h"
#include "com/properties_com.h"
#include "objects/path/PathArguments_com.h"

namespace zyn {

template <class Body>
HRESULT CZYNOutil::change(Body body) noexcept {
  return automation(*this, [&] {
    body();
    watch_.tell(SceneChange::kLook);
  });
}

STDMETHODIMP CZYNOutil::get_Diametre(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, shape_.diameter); });
}

STDMETHODIMP CZYNOutil::put_Diametre(double newVal) noexcept {
  return change([&] { shape_.diameter = positive(L"Diametre", newVal); });
}

STDMETHODIMP CZYNOutil::get_RayonCoin(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, shape_.cornerRadius); });
}

STDMETHODIMP CZYNOutil::put_RayonCoin(double newVal) noexcept {
  return change([&] { shape_.cornerRadius = notNegative(L"RayonCoin", newVal); });
}

STDMETHODIMP CZYNOutil::get_LongueurCoupe(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, shape_.cutLength); });
}

STDMETHODIMP CZYNOutil::put_LongueurCoupe(double newVal) noexcept {
  return change([&] { shape_.cutLength = notNegative(L"LongueurCoupe", newVal); });
}

STDMETHODIMP CZYNOutil::get_Longueur(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, shape_.length); });
}

STDMETHODIMP CZYNOutil::put_Longueur(double newVal) noexcept {
  return change([&] { shape_.length = positive(L"Longueur", newVal); });
}

STDMETHODIMP CZYNOutil::get_DiametrePorte(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, shape_.holderDiameter); });
}

STDMETHODIMP CZYNOutil::put_DiametrePorte(double newVal) noexcept {
  return change([&] { shape_.holderDiameter = notNegative(L"DiametrePorte", newVal); });
}

STDMETHODIMP CZYNOutil::get_LongueurPorte(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, shape_.holderLength); });
}

STDMETHODIMP CZYNOutil::put_LongueurPorte(double newVal) noexcept {
  return change([&] { shape_.holderLength = notNegative(L"LongueurPorte", newVal); });
}

STDMETHODIMP CZYNOutil::setColor(double r, double g, double b, double alpha) noexcept {
  return change([&] { shape_.colour = readColour4(r, g, b, alpha); });
}

}  // namespace zyn
