#pragma once

#include <optional>
#include <string>

#include "ZYNVUE.h"
#include "contract/SceneObject_com.h"
#include "objects/scale/IScaleObject_com.h"
#include "objects/scale/ScaleBar.h"

namespace zyn {

/// A colour scale: tells the colours of values, for meshes and for hosts, and draws itself as a
/// bar in the picture, where it is in a list.
class CZYNEchelleCouleurs final
    : public SceneObject<CZYNEchelleCouleurs, Dual<IZYNEchelleCouleurs>, ITextView, IScaleObject>,
      private ScaleUser {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYNEchelleCouleurs";

  CZYNEchelleCouleurs();
  ~CZYNEchelleCouleurs();

  STDMETHODIMP get_Palette(LONG* pVal) noexcept override;
  STDMETHODIMP put_Palette(LONG newVal) noexcept override;
  STDMETHODIMP setCouleurs(VARIANT RGB) noexcept override;
  STDMETHODIMP get_Minimum(double* pVal) noexcept override;
  STDMETHODIMP put_Minimum(double newVal) noexcept override;
  STDMETHODIMP get_Maximum(double* pVal) noexcept override;
  STDMETHODIMP put_Maximum(double newVal) noexcept override;
  STDMETHODIMP get_Auto(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_Auto(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_NbPaliers(LONG* pVal) noexcept override;
  STDMETHODIMP put_NbPaliers(LONG newVal) noexcept override;
  STDMETHODIMP get_Logarithmique(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_Logarithmique(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP setCouleurAbsente(double r, double g, double b, double alpha) noexcept override;
  STDMETHODIMP Couleur(double Valeur, VARIANT* RGBA) noexcept override;
  STDMETHODIMP get_Titre(BSTR* pVal) noexcept override;
  STDMETHODIMP put_Titre(BSTR newVal) noexcept override;
  STDMETHODIMP setPosition(double x, double y, LONG Reference) noexcept override;
  STDMETHODIMP setTaille(double l, double h) noexcept override;

  STDMETHODIMP Draw3D(int mode) noexcept override;
  STDMETHODIMP Draw2D(int mode) noexcept override;

  std::optional<Box3> STDMETHODCALLTYPE modelBounds() noexcept override { return std::nullopt; }
  bool STDMETHODCALLTYPE mayBePicked(const PickQuery&) noexcept override { return false; }
  ITextView* STDMETHODCALLTYPE textView() noexcept override { return this; }
  bool STDMETHODCALLTYPE takesFonts() noexcept override { return true; }
  HRESULT STDMETHODCALLTYPE draw(const DrawPass& pass) noexcept override;
  void STDMETHODCALLTYPE setTextView(const TextView& view) noexcept override { view_ = view; }

  SharedScale& STDMETHODCALLTYPE sharedScale() noexcept override { return shared_; }
  const std::wstring* STDMETHODCALLTYPE titleInGraph() noexcept override {
    return isPlaced_ ? nullptr : &title_;
  }

 private:
  /// It uses its own colours, and spans no values by that.
  ValueExtent scaledValues() noexcept override { return {}; }
  void scaleChanged() noexcept override { watch_.tell(SceneChange::kLook); }

  void shapeTitle();
  HRESULT draw(int mode, double opacity) noexcept;

  SharedScale shared_;
  ColourPalette own_;
  ScaleBar bar_;
  bool isPlaced_ = false;  ///< by the host
  std::wstring title_;
  bool isTitleWhole_ = true;  ///< as far as it is laid out
  TextView view_;
};

}  // namespace zyn
