#pragma once

#include "ZYNVUE.h"
#include "com/ComClass_com.h"
#include "view3d/CameraValue.h"

namespace zyn {

/// A camera as a value that hosts keep, change and give to views and bitmap contexts.
class CZYNCamera final : public ComClass<CZYNCamera, Dual<IZYNCamera>> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYNCamera";

  CZYNCamera() = default;
  explicit CZYNCamera(const CameraValue& value) : value_(value) {}

  STDMETHODIMP setOeil(double x, double y, double z) noexcept override;
  STDMETHODIMP setCible(double x, double y, double z) noexcept override;
  STDMETHODIMP setHaut(double x, double y, double z) noexcept override;
  STDMETHODIMP getOeil(VARIANT* Point) noexcept override;
  STDMETHODIMP getCible(VARIANT* Point) noexcept override;
  STDMETHODIMP getHaut(VARIANT* Direction) noexcept override;
  STDMETHODIMP get_OeilX(double* pVal) noexcept override;
  STDMETHODIMP get_OeilY(double* pVal) noexcept override;
  STDMETHODIMP get_OeilZ(double* pVal) noexcept override;
  STDMETHODIMP get_CibleX(double* pVal) noexcept override;
  STDMETHODIMP get_CibleY(double* pVal) noexcept override;
  STDMETHODIMP get_CibleZ(double* pVal) noexcept override;
  STDMETHODIMP get_HautX(double* pVal) noexcept override;
  STDMETHODIMP get_HautY(double* pVal) noexcept override;
  STDMETHODIMP get_HautZ(double* pVal) noexcept override;
  STDMETHODIMP get_Largeur(double* pVal) noexcept override;
  STDMETHODIMP put_Largeur(double newVal) noexcept override;
  STDMETHODIMP get_Hauteur(double* pVal) noexcept override;
  STDMETHODIMP put_Hauteur(double newVal) noexcept override;
  STDMETHODIMP get_Perspective(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_Perspective(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_AngleOuverture(double* pVal) noexcept override;
  STDMETHODIMP put_AngleOuverture(double newVal) noexcept override;
  STDMETHODIMP get_Profondeur(double* pVal) noexcept override;
  STDMETHODIMP put_Profondeur(double newVal) noexcept override;
  STDMETHODIMP get_Texte(BSTR* pVal) noexcept override;
  STDMETHODIMP put_Texte(BSTR newVal) noexcept override;
  STDMETHODIMP Copie(IDispatch** Camera) noexcept override;
  STDMETHODIMP Interpole(IDispatch* Autre, double t, IDispatch** Camera) noexcept override;

 private:
  HRESULT giveValue(double* place, double value) noexcept;

  CameraValue value_;
};

/// What an argument tells of a camera with which something can be seen. Throws badArgument for
/// `name` where it is none.
CameraValue cameraIn(const wchar_t* name, IDispatch* argument);

/// Throws badArgument for `name`, which would have led to this camera, where nothing can be seen
/// with it.
void requireSight(const wchar_t* name, const CameraValue& camera);

/// Answers with a new camera object; with null where there is none. E_POINTER without a place.
HRESULT giveCamera(IDispatch** place, const std::optional<CameraValue>& value);

}  // namespace zyn
