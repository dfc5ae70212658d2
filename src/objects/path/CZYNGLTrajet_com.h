#pragma once

#include <wrl/client.h>

#include <optional>

#include "ZYNVUE.h"
#include "contract/IProgressSource_com.h"
#include "contract/SceneObject_com.h"
#include "objects/path/IToolObject_com.h"
#include "objects/path/PathPainter_gl.h"
#include "objects/path/PathStorage_win.h"
#include "objects/scale/ScaleChoice_com.h"

namespace zyn {

/// A tool path as one object: points and segments, a place on it, how it is drawn, and the tool.
/// Members of points, files and place are in CZYNGLTrajet_com.cpp, those of the look and what views
/// ask in CZYNGLTrajetLook_com.cpp.
class CZYNGLTrajet final : public SceneObject<CZYNGLTrajet, Dual<IZYNGLTrajet>, IProgressSource>,
                           private ScaleUser,
                           private SceneWatcher {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYNGLTrajet";

  CZYNGLTrajet() = default;
  ~CZYNGLTrajet();

  STDMETHODIMP setPoints3D(VARIANT x, VARIANT y, VARIANT Z) noexcept override;
  STDMETHODIMP setPoints(VARIANT XYZ) noexcept override;
  STDMETHODIMP AjouterPoints(VARIANT XYZ, VARIANT Types, VARIANT Vitesses,
                             VARIANT Lignes) noexcept override;
  STDMETHODIMP setTypes(VARIANT Types) noexcept override;
  STDMETHODIMP setVitesses(VARIANT Vitesses) noexcept override;
  STDMETHODIMP setLignes(VARIANT Lignes) noexcept override;
  STDMETHODIMP get_VitesseAvance(double* pVal) noexcept override;
  STDMETHODIMP put_VitesseAvance(double newVal) noexcept override;
  STDMETHODIMP get_VitesseRapide(double* pVal) noexcept override;
  STDMETHODIMP put_VitesseRapide(double newVal) noexcept override;
  STDMETHODIMP get_NbPoints(LONG* pVal) noexcept override;
  STDMETHODIMP get_NbSegments(LONG* pVal) noexcept override;
  STDMETHODIMP getPoints(VARIANT* XYZ) noexcept override;
  STDMETHODIMP getTypes(VARIANT* Types) noexcept override;
  STDMETHODIMP getVitesses(VARIANT* Vitesses) noexcept override;
  STDMETHODIMP getLignes(VARIANT* Lignes) noexcept override;
  STDMETHODIMP get_Boite(VARIANT* pVal) noexcept override;
  STDMETHODIMP Copie(IDispatch** Trajet) noexcept override;
  STDMETHODIMP get_Position(double* pVal) noexcept override;
  STDMETHODIMP put_Position(double newVal) noexcept override;
  STDMETHODIMP get_PositionTemps(double* pVal) noexcept override;
  STDMETHODIMP put_PositionTemps(double newVal) noexcept override;
  STDMETHODIMP get_PositionSegment(LONG* pVal) noexcept override;
  STDMETHODIMP put_PositionSegment(LONG newVal) noexcept override;
  STDMETHODIMP get_PositionLigne(LONG* pVal) noexcept override;
  STDMETHODIMP put_PositionLigne(LONG newVal) noexcept override;
  STDMETHODIMP get_Longueur(double* pVal) noexcept override;
  STDMETHODIMP get_Duree(double* pVal) noexcept override;
  STDMETHODIMP getPosition(VARIANT* Point) noexcept override;
  STDMETHODIMP setCouleurType(LONG Type, double r, double g, double b,
                              double alpha) noexcept override;
  STDMETHODIMP setTypeVisible(LONG Type, VARIANT_BOOL Visible) noexcept override;
  STDMETHODIMP getTypeVisible(LONG Type, VARIANT_BOOL* Visible) noexcept override;
  STDMETHODIMP get_RapidesVisibles(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_RapidesVisibles(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_EpaisseurTrait(double* pVal) noexcept override;
  STDMETHODIMP put_EpaisseurTrait(double newVal) noexcept override;
  STDMETHODIMP get_StyleRapides(LONG* pVal) noexcept override;
  STDMETHODIMP put_StyleRapides(LONG newVal) noexcept override;
  STDMETHODIMP get_ModeCouleur(LONG* pVal) noexcept override;
  STDMETHODIMP put_ModeCouleur(LONG newVal) noexcept override;
  STDMETHODIMP get_EchelleCouleurs(IDispatch** pVal) noexcept override;
  STDMETHODIMP put_EchelleCouleurs(IDispatch* newVal) noexcept override;
  STDMETHODIMP putref_EchelleCouleurs(IDispatch* newVal) noexcept override;
  STDMETHODIMP setCouleurFait(double r, double g, double b, double alpha) noexcept override;
  STDMETHODIMP get_Decalage(double* pVal) noexcept override;
  STDMETHODIMP put_Decalage(double newVal) noexcept override;
  STDMETHODIMP get_Outil(IDispatch** pVal) noexcept override;
  STDMETHODIMP put_Outil(IDispatch* newVal) noexcept override;
  STDMETHODIMP putref_Outil(IDispatch* newVal) noexcept override;
  STDMETHODIMP get_NomSelection(LONG* pVal) noexcept override;
  STDMETHODIMP put_NomSelection(LONG newVal) noexcept override;

  STDMETHODIMP ChargerGCode(BSTR Fichier) noexcept override;
  STDMETHODIMP get_Tolerance(double* pVal) noexcept override;
  STDMETHODIMP put_Tolerance(double newVal) noexcept override;
  STDMETHODIMP get_CodesInconnus(LONG* pVal) noexcept override;
  STDMETHODIMP put_CodesInconnus(LONG newVal) noexcept override;
  STDMETHODIMP get_NbCodesIgnores(LONG* pVal) noexcept override;
  STDMETHODIMP get_SauterBlocs(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_SauterBlocs(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_RetraitPercage(double* pVal) noexcept override;
  STDMETHODIMP put_RetraitPercage(double newVal) noexcept override;

  STDMETHODIMP Draw3D(int mode) noexcept override;
  STDMETHODIMP Draw2D(int mode) noexcept override;

  HRESULT STDMETHODCALLTYPE draw(const DrawPass& pass) noexcept override;
  std::optional<Box3> STDMETHODCALLTYPE modelBounds() noexcept override {
    return model_.path().bounds();
  }
  std::optional<Box3> STDMETHODCALLTYPE movedBounds(const GlMatrix& matrix) noexcept override;
  bool STDMETHODCALLTYPE mayBePicked(const PickQuery& query) noexcept override;
  std::optional<Coverage> STDMETHODCALLTYPE coverage(const RegionQuery& query) noexcept override;
  std::optional<std::int32_t> STDMETHODCALLTYPE pickNumber() noexcept override {
    return look_.name;
  }
  ProgressListeners& STDMETHODCALLTYPE progressListeners() noexcept override { return listeners_; }

 private:
  ValueExtent scaledValues() noexcept override;
  void scaleChanged() noexcept override;
  void objectChanged(SceneChange change) noexcept override { watch_.tell(change); }

  bool isBySpeed() const { return look_.mode == PathLook::kBySpeed; }

  /// The body of a member that changes where the path is, and tells so.
  template <class Body>
  HRESULT changeExtent(Body body) noexcept;
  /// That of one that changes how segments are moved along.
  template <class Body>
  HRESULT changeSegments(Body body) noexcept;
  /// That of one that moves the place.
  template <class Body>
  HRESULT movePlace(Body body) noexcept;

  void speedsChanged() noexcept;
  void paint(int mode, const PathPass& pass);
  const SpeedColours* currentColours();
  void useTool(IDispatch* object);

  PathModel model_;
  PathLook look_;
  PathLists lists_;
  ProgressListeners listeners_;
  PathLoading loading_;
  std::size_t skippedCodes_ = 0;  ///< by the last load

  Microsoft::WRL::ComPtr<IDispatch> toolDispatch_;  ///< null: none
  Microsoft::WRL::ComPtr<IToolObject> tool_;
  WatchLink toolLink_{.watcher = this};

  std::optional<SpeedColours> colours_;  ///< as they were last used
  std::uint64_t scaleRevision_ = 0;      ///< of the scale that they are of
  ScaleChoice scale_{*this};
};

}  // namespace zyn
