#pragma once

#include <optional>
#include <string>

#include "ZYNMODELEGEOM.h"
#include "ZYNVUE.h"
#include "com/ComClass_com.h"
#include "contract/ISceneObject_com.h"
#include "platform/RunningScope_win.h"
#include "scene/SceneNest_com.h"

namespace zyn {

/// A group: a draw list that is shown as one object, moved, faded or not at all.
class CZYNGroupe final
    : public ComClass<CZYNGroupe, Dual<IZYNGroupe>, Extending<ISceneObject, IGLDraw>, ITextView> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYNGroupe";

  STDMETHODIMP Add(IDispatch* Objet, LONG Mode) noexcept override;
  STDMETHODIMP Remove(IDispatch* Objet) noexcept override;
  STDMETHODIMP RemoveAll() noexcept override;
  STDMETHODIMP get_Count(LONG* pVal) noexcept override;
  STDMETHODIMP Item(LONG Index, IDispatch** Objet) noexcept override;
  STDMETHODIMP get__NewEnum(IUnknown** pVal) noexcept override;
  STDMETHODIMP get_Visible(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_Visible(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_Transformation(VARIANT* pVal) noexcept override;
  STDMETHODIMP put_Transformation(VARIANT newVal) noexcept override;
  STDMETHODIMP setRepere(VARIANT Origine, VARIANT X, VARIANT Y) noexcept override;
  STDMETHODIMP get_Opacite(double* pVal) noexcept override;
  STDMETHODIMP put_Opacite(double newVal) noexcept override;
  STDMETHODIMP get_Nom(BSTR* pVal) noexcept override;
  STDMETHODIMP put_Nom(BSTR newVal) noexcept override;
  STDMETHODIMP get_NomSelection(LONG* pVal) noexcept override;
  STDMETHODIMP put_NomSelection(LONG newVal) noexcept override;

  STDMETHODIMP Draw3D(int mode) noexcept override;
  STDMETHODIMP Draw2D(int mode) noexcept override;
  STDMETHODIMP GetBox2D(IDispatch** box) noexcept override;
  STDMETHODIMP GetBox3D(IDispatch** box) noexcept override;
  STDMETHODIMP GetParam(IDispatch* P, double* value) noexcept override;

  IDispatch* STDMETHODCALLTYPE hostInterface() noexcept override {
    return isAggregated() ? nullptr : static_cast<IZYNGroupe*>(this);
  }
  SceneWatch& STDMETHODCALLTYPE watch() noexcept override { return watch_; }
  SceneNest* STDMETHODCALLTYPE nest() noexcept override { return &nest_; }
  ITextView* STDMETHODCALLTYPE textView() noexcept override { return this; }
  bool STDMETHODCALLTYPE takesFonts() noexcept override { return nest_.list().mayHoldText(); }
  void STDMETHODCALLTYPE setTextView(const TextView& view) noexcept override { view_ = view; }
  std::optional<Box3> STDMETHODCALLTYPE modelBounds() noexcept override;
  std::optional<Box3> STDMETHODCALLTYPE movedBounds(const GlMatrix& matrix) noexcept override;
  std::optional<SurfaceHit> STDMETHODCALLTYPE nearestHit(const Ray& ray) noexcept override;
  std::optional<std::int32_t> STDMETHODCALLTYPE selectionName() noexcept override {
    return nomSelection_;
  }
  bool STDMETHODCALLTYPE mayBePicked(const PickQuery& query) noexcept override;
  bool STDMETHODCALLTYPE hidesLines() noexcept override {
    return nest_.isShown() && nest_.list().hidesLines();
  }
  HRESULT STDMETHODCALLTYPE draw(const DrawPass& pass) noexcept override;

 private:
  HRESULT queryExtra(REFIID iid, void** out) noexcept override;

  HRESULT drawAlone(int mode, bool isFlat) noexcept;
  void drawIn(const DrawPass& pass);
  void drawContents(const DrawPass& pass);
  std::optional<Box3> measure(bool isFlat);

  SceneWatch watch_;
  SceneNest nest_{watch_};
  double opacity_ = 1;
  std::wstring name_;
  LONG nomSelection_ = -1;
  TextView view_;

  RunningScope drawing_;
  HGLRC drawnIn_ = nullptr;  ///< the context, while it is being drawn
  RunningScope measuring_;
};

}  // namespace zyn
