#pragma once

#include <memory>
#include <optional>

#include "ZYNVUE.h"
#include "contract/IProgressSource_com.h"
#include "contract/SceneObject_com.h"
#include "objects/mesh/MeshPainter_gl.h"
#include "objects/scale/ScaleChoice_com.h"

namespace zyn {

/// A whole part as one object: points and faces, how they are coloured and drawn, and what can be
/// asked of them.
class CZYNGLMaillage final
    : public SceneObject<CZYNGLMaillage, Dual<IZYNGLMaillage>, IProgressSource>,
      private ScaleUser {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYNGLMaillage";

  STDMETHODIMP setSommets(VARIANT XYZ) noexcept override;
  STDMETHODIMP setFaces(VARIANT Indices) noexcept override;
  STDMETHODIMP setPolygones(VARIANT Comptes, VARIANT Indices) noexcept override;
  STDMETHODIMP setNormales(VARIANT XYZ) noexcept override;
  STDMETHODIMP get_AngleLissage(double* pVal) noexcept override;
  STDMETHODIMP put_AngleLissage(double newVal) noexcept override;
  STDMETHODIMP setColor(double r, double g, double b, double alpha) noexcept override;
  STDMETHODIMP setMaterial(double r, double g, double b, double alpha, double Ambiant,
                           double Diffuse, double Specular, double Shininess,
                           double Emissive) noexcept override;
  STDMETHODIMP setCouleursSommets(VARIANT RGBA) noexcept override;
  STDMETHODIMP setCouleursFaces(VARIANT RGBA) noexcept override;
  STDMETHODIMP setValeurs(VARIANT Valeurs) noexcept override;
  STDMETHODIMP get_EchelleCouleurs(IDispatch** pVal) noexcept override;
  STDMETHODIMP put_EchelleCouleurs(IDispatch* newVal) noexcept override;
  STDMETHODIMP putref_EchelleCouleurs(IDispatch* newVal) noexcept override;
  STDMETHODIMP setNomsFaces(VARIANT Noms) noexcept override;
  STDMETHODIMP get_NomSelection(LONG* pVal) noexcept override;
  STDMETHODIMP put_NomSelection(LONG newVal) noexcept override;
  STDMETHODIMP setSommetsPartie(LONG Premier, VARIANT XYZ) noexcept override;
  STDMETHODIMP get_DeuxFaces(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_DeuxFaces(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_NbSommets(LONG* pVal) noexcept override;
  STDMETHODIMP get_NbFaces(LONG* pVal) noexcept override;
  STDMETHODIMP getSommets(VARIANT* XYZ) noexcept override;
  STDMETHODIMP getFaces(VARIANT* Indices) noexcept override;
  STDMETHODIMP getPolygones(VARIANT* CompteEtIndices) noexcept override;
  STDMETHODIMP getNormales(VARIANT* XYZ) noexcept override;
  STDMETHODIMP getNomsFaces(VARIANT* Noms) noexcept override;
  STDMETHODIMP NomGroupe(LONG Face, BSTR* Nom) noexcept override;
  STDMETHODIMP get_Aire(double* pVal) noexcept override;
  STDMETHODIMP get_Volume(double* pVal) noexcept override;
  STDMETHODIMP get_EstFerme(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP get_Boite(VARIANT* pVal) noexcept override;
  STDMETHODIMP Copie(IDispatch** Maillage) noexcept override;
  STDMETHODIMP Extraire(VARIANT Faces, IDispatch** Maillage) noexcept override;
  STDMETHODIMP Charger(BSTR Fichier) noexcept override;
  STDMETHODIMP Enregistrer(BSTR Fichier) noexcept override;
  STDMETHODIMP get_StyleRendu(LONG* pVal) noexcept override;
  STDMETHODIMP put_StyleRendu(LONG newVal) noexcept override;
  STDMETHODIMP get_AngleAretes(double* pVal) noexcept override;
  STDMETHODIMP put_AngleAretes(double newVal) noexcept override;
  STDMETHODIMP setCouleurAretes(double r, double g, double b, double alpha) noexcept override;
  STDMETHODIMP get_EpaisseurAretes(double* pVal) noexcept override;
  STDMETHODIMP put_EpaisseurAretes(double newVal) noexcept override;

  STDMETHODIMP Draw3D(int mode) noexcept override;
  STDMETHODIMP Draw2D(int mode) noexcept override;

  HRESULT STDMETHODCALLTYPE draw(const DrawPass& pass) noexcept override;
  bool STDMETHODCALLTYPE hidesLines() noexcept override {
    return look_.style == MeshLook::kHiddenLine;
  }
  std::optional<Box3> STDMETHODCALLTYPE modelBounds() noexcept override { return model_.bounds(); }
  std::optional<Box3> STDMETHODCALLTYPE movedBounds(const GlMatrix& matrix) noexcept override;
  std::optional<SurfaceHit> STDMETHODCALLTYPE nearestHit(const Ray& ray) noexcept override;
  bool STDMETHODCALLTYPE mayBePicked(const PickQuery& query) noexcept override;
  std::optional<Coverage> STDMETHODCALLTYPE coverage(const RegionQuery& query) noexcept override;
  std::optional<std::int32_t> STDMETHODCALLTYPE pickNumber() noexcept override {
    return look_.name;
  }
  ProgressListeners& STDMETHODCALLTYPE progressListeners() noexcept override { return listeners_; }

 private:
  ValueExtent scaledValues() noexcept override;
  void scaleChanged() noexcept override;

  /// The body of a member that changes where the mesh is, and tells so.
  template <class Body>
  HRESULT changeExtent(Body body) noexcept;
  /// That of one that changes the values or their points.
  template <class Body>
  HRESULT changeValues(Body body) noexcept;

  void paint(const MeshPass& pass);
  const MeshScale* currentScale();
  /// A new object that looks like this one, with another mesh.
  HRESULT giveLike(Mesh mesh, IDispatch** place) const;

  MeshModel model_;
  MeshLook look_;
  ObjectLists lists_;

  ProgressListeners listeners_;
  std::unique_ptr<const MeshScale> currentScale_;  ///< as it was last used
  ScaleChoice scale_{*this};
};

}  // namespace zyn
