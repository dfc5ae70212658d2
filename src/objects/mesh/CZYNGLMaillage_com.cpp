#include "objects/mesh/CZYNGLMaillage_com.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "com/NumberArray_com.h"
#include "com/NumericArrayVariant_com.h"
#include "com/TextValues_com.h"
#include "com/arguments_com.h"
#include "com/automation_com.h"
#include "com/properties_com.h"
#include "model/Measures.h"
#include "model/SubMesh.h"
#include "objects/mesh/MeshArguments_com.h"
#include "objects/mesh/MeshStorage_win.h"

namespace zyn {

namespace {

constexpr double kLargestAngle = 180;

/// Answers with the size of something, which COM has 31 bits for.
HRESULT giveCount(LONG* place, std::size_t count) {
  constexpr std::size_t kMost = std::numeric_limits<LONG>::max();
  return give(place, static_cast<LONG>(std::min(count, kMost)));
}

std::vector<std::int32_t> integersOf(const std::vector<std::uint32_t>& numbers) {
  return {numbers.begin(), numbers.end()};
}

}  // namespace

template <class Body>
HRESULT CZYNGLMaillage::changeExtent(Body body) noexcept {
  return automation(*this, [&] {
    body();
    watch_.tell(SceneChange::kExtent);
  });
}

template <class Body>
HRESULT CZYNGLMaillage::changeValues(Body body) noexcept {
  return changeExtent([&] {
    const bool hadValues = !model_.mesh().values.empty();
    body();
    if (hadValues || !model_.mesh().values.empty()) {
      scale_.scale().valuesChanged();
    }
  });
}

STDMETHODIMP CZYNGLMaillage::setSommets(VARIANT XYZ) noexcept {
  return changeValues([&] { model_.setPoints(readPoints(XYZ)); });
}

STDMETHODIMP CZYNGLMaillage::setFaces(VARIANT Indices) noexcept {
  return changeLook([&] {
    const NumberArray indices(L"Indices", Indices);
    indices.requireGiven();
    indices.rows(3);
    model_.setFaces(indices.indices(model_.mesh().pointCount(), L"points"), {});
  });
}

STDMETHODIMP CZYNGLMaillage::setPolygones(VARIANT Comptes, VARIANT Indices) noexcept {
  return changeLook([&] {
    const NumberArray indices(L"Indices", Indices);
    indices.requireGiven();
    std::vector<std::uint32_t> ends = readFaceEnds(Comptes, indices.count());
    model_.setFaces(indices.indices(model_.mesh().pointCount(), L"points"), std::move(ends));
  });
}

STDMETHODIMP CZYNGLMaillage::setNormales(VARIANT XYZ) noexcept {
  return changeLook([&] { model_.setNormals(readNormals(XYZ, model_.mesh())); });
}

STDMETHODIMP CZYNGLMaillage::get_AngleLissage(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, model_.smoothAngle()); });
}

STDMETHODIMP CZYNGLMaillage::put_AngleLissage(double newVal) noexcept {
  return changeLook(
      [&] { model_.setSmoothAngle(inRange(L"AngleLissage", newVal, 0, kLargestAngle)); });
}

STDMETHODIMP CZYNGLMaillage::setColor(double r, double g, double b, double alpha) noexcept {
  return changeLook([&] {
    look_.colour = readColour(r, g, b, alpha);
    look_.material.reset();
  });
}

STDMETHODIMP CZYNGLMaillage::setMaterial(double r, double g, double b, double alpha, double Ambiant,
                                         double Diffuse, double Specular, double Shininess,
                                         double Emissive) noexcept {
  return changeLook([&] {
    const MeshLook::Material material{
        inRange(L"Ambiant", Ambiant, 0, 1), inRange(L"Diffuse", Diffuse, 0, 1),
        inRange(L"Specular", Specular, 0, 1), inRange(L"Shininess", Shininess, 0, 1),
        inRange(L"Emissive", Emissive, 0, 1)};
    look_.colour = readColour(r, g, b, alpha);
    look_.material = material;
  });
}

STDMETHODIMP CZYNGLMaillage::setCouleursSommets(VARIANT RGBA) noexcept {
  return changeLook([&] { model_.setPointColours(readPointColours(RGBA, model_.mesh())); });
}

STDMETHODIMP CZYNGLMaillage::setCouleursFaces(VARIANT RGBA) noexcept {
  return changeLook([&] { model_.setFaceColours(readFaceColours(RGBA, model_.mesh())); });
}

STDMETHODIMP CZYNGLMaillage::setValeurs(VARIANT Valeurs) noexcept {
  return changeValues([&] { model_.setValues(readValues(Valeurs, model_.mesh())); });
}

STDMETHODIMP CZYNGLMaillage::get_EchelleCouleurs(IDispatch** pVal) noexcept {
  return automation(*this, [&] { return scale_.give(pVal); });
}

STDMETHODIMP CZYNGLMaillage::put_EchelleCouleurs(IDispatch* newVal) noexcept {
  return changeLook([&] {
    scale_.choose(newVal);
    currentScale_.reset();
  });
}

STDMETHODIMP CZYNGLMaillage::putref_EchelleCouleurs(IDispatch* newVal) noexcept {
  return put_EchelleCouleurs(newVal);
}

STDMETHODIMP CZYNGLMaillage::setNomsFaces(VARIANT Noms) noexcept {
  return automation(*this, [&] { model_.setFaceNames(readNames(Noms, model_.mesh())); });
}

STDMETHODIMP CZYNGLMaillage::get_NomSelection(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, look_.name); });
}

STDMETHODIMP CZYNGLMaillage::put_NomSelection(LONG newVal) noexcept {
  return automation(*this, [&] { look_.name = newVal; });
}

STDMETHODIMP CZYNGLMaillage::setSommetsPartie(LONG Premier, VARIANT XYZ) noexcept {
  return changeExtent([&] {
    const std::vector<double> points = readPoints(XYZ);
    const std::size_t count = model_.mesh().pointCount();
    if (Premier < 0 || static_cast<std::size_t>(Premier) > count) {
      throw badArgument(L"Premier", std::to_wstring(Premier) + L", there are " +
                                        std::to_wstring(count) + L" points");
    }
    if (points.size() / 3 > count - static_cast<std::size_t>(Premier)) {
      throw badArgument(L"XYZ", std::to_wstring(points.size() / 3) + L" points from " +
                                    std::to_wstring(Premier) + L" on, there are " +
                                    std::to_wstring(count));
    }
    if (!points.empty()) {
      model_.movePoints(static_cast<std::size_t>(Premier), points);
    }
  });
}

STDMETHODIMP CZYNGLMaillage::get_DeuxFaces(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, look_.bothSides); });
}

STDMETHODIMP CZYNGLMaillage::put_DeuxFaces(VARIANT_BOOL newVal) noexcept {
  return changeLook([&] { look_.bothSides = isOn(newVal); });
}

STDMETHODIMP CZYNGLMaillage::get_NbSommets(LONG* pVal) noexcept {
  return automation(*this, [&] { return giveCount(pVal, model_.mesh().pointCount()); });
}

STDMETHODIMP CZYNGLMaillage::get_NbFaces(LONG* pVal) noexcept {
  return automation(*this, [&] { return giveCount(pVal, model_.mesh().faceCount()); });
}

STDMETHODIMP CZYNGLMaillage::getSommets(VARIANT* XYZ) noexcept {
  return automation(*this, [&] { return giveNumbers(XYZ, model_.mesh().points); });
}

STDMETHODIMP CZYNGLMaillage::getFaces(VARIANT* Indices) noexcept {
  return automation(*this, [&] {
    const Mesh& mesh = model_.mesh();
    if (mesh.faceEnds.empty()) {
      return giveIntegers(Indices, integersOf(mesh.corners));
    }
    std::vector<std::int32_t> indices;
    for (std::size_t face = 0; face < mesh.faceCount(); ++face) {
      model_.triangles().forEach(mesh, face, [&](const Triangulation::Triangle& corners) {
        for (const std::uint32_t corner : corners) {
          indices.push_back(static_cast<std::int32_t>(mesh.corners[corner]));
        }
      });
    }
    return giveIntegers(Indices, indices);
  });
}

STDMETHODIMP CZYNGLMaillage::getPolygones(VARIANT* CompteEtIndices) noexcept {
  return automation(*this, [&] {
    const Mesh& mesh = model_.mesh();
    std::vector<std::int32_t> numbers;
    numbers.reserve(mesh.corners.size() + mesh.faceCount());
    for (std::size_t face = 0; face < mesh.faceCount(); ++face) {
      numbers.push_back(static_cast<std::int32_t>(mesh.faceEnd(face) - mesh.faceBegin(face)));
      for (std::size_t corner = mesh.faceBegin(face); corner < mesh.faceEnd(face); ++corner) {
        numbers.push_back(static_cast<std::int32_t>(mesh.corners[corner]));
      }
    }
    return giveIntegers(CompteEtIndices, numbers);
  });
}

STDMETHODIMP CZYNGLMaillage::getNormales(VARIANT* XYZ) noexcept {
  return automation(*this, [&] { return giveNumbers(XYZ, model_.normals()); });
}

STDMETHODIMP CZYNGLMaillage::getNomsFaces(VARIANT* Noms) noexcept {
  return automation(*this, [&] {
    const Mesh& mesh = model_.mesh();
    std::vector<std::int32_t> names = mesh.faceNames;
    for (std::size_t face = names.size(); face < mesh.faceCount(); ++face) {
      names.push_back(static_cast<std::int32_t>(face));
    }
    return giveIntegers(Noms, names);
  });
}

STDMETHODIMP CZYNGLMaillage::NomGroupe(LONG Face, BSTR* Nom) noexcept {
  return automation(*this, [&] {
    const Mesh& mesh = model_.mesh();
    if (Face < 0 || static_cast<std::size_t>(Face) >= mesh.faceCount()) {
      throw badArgument(L"Face", std::to_wstring(Face) + L", there are " +
                                     std::to_wstring(mesh.faceCount()) + L" faces");
    }
    return giveText(Nom, groupName(mesh, static_cast<std::size_t>(Face)));
  });
}

STDMETHODIMP CZYNGLMaillage::get_Aire(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, areaOf(model_.mesh(), model_.triangles())); });
}

STDMETHODIMP CZYNGLMaillage::get_Volume(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, volumeOf(model_.mesh(), model_.triangles())); });
}

STDMETHODIMP CZYNGLMaillage::get_EstFerme(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, isClosed(model_.mesh())); });
}

STDMETHODIMP CZYNGLMaillage::get_Boite(VARIANT* pVal) noexcept {
  return automation(*this, [&] {
    const std::optional<Box3>& box = model_.bounds();
    return giveNumbers(pVal, box ? std::vector<double>{box->xMin, box->xMax, box->yMin, box->yMax,
                                                       box->zMin, box->zMax}
                                 : std::vector<double>{});
  });
}

HRESULT CZYNGLMaillage::giveLike(Mesh mesh, IDispatch** place) const {
  const auto made = makeObject<CZYNGLMaillage>();
  made->model_.take(std::move(mesh));
  made->model_.setSmoothAngle(model_.smoothAngle());
  made->look_ = look_;
  made->scale_.choose(scale_.object());
  *place = static_cast<IZYNGLMaillage*>(made.Get());
  (*place)->AddRef();
  return S_OK;
}

STDMETHODIMP CZYNGLMaillage::Copie(IDispatch** Maillage) noexcept {
  return automation(*this, [&] {
    const HRESULT given = give(Maillage, nullptr);
    return FAILED(given) ? given : giveLike(model_.mesh(), Maillage);
  });
}

STDMETHODIMP CZYNGLMaillage::Extraire(VARIANT Faces, IDispatch** Maillage) noexcept {
  return automation(*this, [&] {
    const HRESULT given = give(Maillage, nullptr);
    if (FAILED(given)) {
      return given;
    }
    const Mesh& mesh = model_.mesh();
    const NumberArray faces(L"Faces", Faces);
    faces.requireGiven();
    return giveLike(subMesh(mesh, faces.indices(mesh.faceCount(), L"faces")), Maillage);
  });
}

STDMETHODIMP CZYNGLMaillage::Charger(BSTR Fichier) noexcept {
  return automation(*this, [&] {
    const std::wstring file = readFileName(Fichier);
    Mesh mesh = loadMesh(file, listeners_.about(file));
    return changeValues([&] { model_.take(std::move(mesh)); });
  });
}

STDMETHODIMP CZYNGLMaillage::Enregistrer(BSTR Fichier) noexcept {
  return automation(*this, [&] {
    const std::wstring file = readFileName(Fichier);
    if (!canSaveMesh(file)) {
      throw badArgument(L"Fichier", file + L" does not end in .stl, .ply, .obj or .off");
    }
    // A listener may change the mesh meanwhile.
    const Mesh mesh = model_.mesh();
    saveMesh(mesh, file, listeners_.about(file));
  });
}

STDMETHODIMP CZYNGLMaillage::get_StyleRendu(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, look_.style); });
}

STDMETHODIMP CZYNGLMaillage::put_StyleRendu(LONG newVal) noexcept {
  return changeLook([&] {
    look_.style = inRange(L"StyleRendu", newVal, MeshLook::kSurfaces, MeshLook::kPoints);
  });
}

STDMETHODIMP CZYNGLMaillage::get_AngleAretes(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, look_.featureAngle); });
}

STDMETHODIMP CZYNGLMaillage::put_AngleAretes(double newVal) noexcept {
  return changeLook(
      [&] { look_.featureAngle = inRange(L"AngleAretes", newVal, 0, kLargestAngle); });
}

STDMETHODIMP CZYNGLMaillage::setCouleurAretes(double r, double g, double b, double alpha) noexcept {
  return changeLook([&] { look_.edgeColour = readColour(r, g, b, alpha); });
}

STDMETHODIMP CZYNGLMaillage::get_EpaisseurAretes(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, look_.edgeWidth); });
}

STDMETHODIMP CZYNGLMaillage::put_EpaisseurAretes(double newVal) noexcept {
  return changeLook([&] { look_.edgeWidth = positive(L"EpaisseurAretes", newVal); });
}

STDMETHODIMP CZYNGLMaillage::Draw3D(int mode) noexcept {
  return automation(*this, [&] { paint({.mode = mode}); });
}

STDMETHODIMP CZYNGLMaillage::Draw2D(int mode) noexcept {
  return automation(*this, [&] { paint({.mode = mode, .isFlat = true}); });
}

HRESULT STDMETHODCALLTYPE CZYNGLMaillage::draw(const DrawPass& pass) noexcept {
  return automation(*this, [&] {
    paint({.mode = pass.mode,
           .isFlat = pass.isFlat,
           .lists = pass.lists,
           .query = pass.query,
           .opacity = pass.opacity,
           .laysDepth = pass.depth != DepthPhase::kLaid,
           .drawsLines = pass.depth != DepthPhase::kOnly,
           .pixelScale = pass.texts.pixelScale});
  });
}

std::optional<Box3> STDMETHODCALLTYPE CZYNGLMaillage::movedBounds(const GlMatrix& matrix) noexcept {
  const Mesh& mesh = model_.mesh();
  std::optional<Box3> around;
  for (std::size_t i = 0; i < mesh.points.size(); i += 3) {
    const Point p = moved(matrix, mesh.points[i], mesh.points[i + 1], mesh.points[i + 2]);
    const Box3 box{p.x, p.x, p.y, p.y, p.z, p.z};
    if (around) {
      around->unite(box);
    } else {
      around = box;
    }
  }
  return around;
}

/// None, too, where memory runs out for the search.
std::optional<SurfaceHit> STDMETHODCALLTYPE CZYNGLMaillage::nearestHit(const Ray& ray) noexcept {
  const bool frontsOnly = !look_.bothSides && look_.colour.alpha >= 1 && !ray.meetsBacks;
  std::optional<MeshHit> hit;
  try {
    hit = model_.tree().nearest(model_.mesh(), model_.triangles(),
                                {ray.origin.x, ray.origin.y, ray.origin.z},
                                {ray.direction.x, ray.direction.y, ray.direction.z}, frontsOnly);
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }
  if (!hit) {
    return std::nullopt;
  }
  return SurfaceHit{hit->distance, {hit->normal.x, hit->normal.y, hit->normal.z}};
}

bool STDMETHODCALLTYPE CZYNGLMaillage::mayBePicked(const PickQuery& query) noexcept {
  std::optional<Box3> box = model_.bounds();
  if (look_.name < 0 || !box) {
    return false;
  }
  if (query.isFlat) {
    box->zMin = box->zMax = 0;
  }
  return query.volume.mayMeet(*box);
}

/// Of its faces in every style. Left to drawing where memory runs out for the search.
std::optional<Coverage> STDMETHODCALLTYPE
CZYNGLMaillage::coverage(const RegionQuery& query) noexcept {
  const Mesh& mesh = model_.mesh();
  Coverage covered = Coverage::kNothing;
  const auto isOpen = [&](const Box3& box) {
    const Coverage inBox = query.isSettledBy(covered) ? Coverage::kNothing : query.ofBox(box);
    if (inBox != Coverage::kPart) {
      covered = joined(covered, inBox);
    }
    return inBox == Coverage::kPart;
  };
  const auto pointOf = [&](std::uint32_t corner) {
    const Vector v = cornerAt(mesh, corner);
    return Point(v.x, v.y, v.z);
  };
  try {
    model_.tree().forEachFace(isOpen, [&](std::uint32_t face) {
      model_.triangles().forEach(mesh, face, [&](const Triangulation::Triangle& corners) {
        const auto& [a, b, c] = corners;
        covered = joined(covered, query.ofTriangle(pointOf(a), pointOf(b), pointOf(c)));
      });
    });
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }
  return covered;
}

ValueExtent CZYNGLMaillage::scaledValues() noexcept {
  ValueExtent extent;
  for (const double value : model_.mesh().values) {
    extent.include(value);
  }
  return extent;
}

void CZYNGLMaillage::scaleChanged() noexcept {
  if (!model_.mesh().values.empty()) {
    watch_.tell(SceneChange::kLook);
  }
}

void CZYNGLMaillage::paint(const MeshPass& pass) {
  drawMesh(model_, look_, currentScale(), pass, lists_);
}

/// Null without values.
const MeshScale* CZYNGLMaillage::currentScale() {
  if (model_.mesh().values.empty()) {
    currentScale_.reset();
    return nullptr;
  }
  SharedScale& shared = scale_.scale();
  if (!currentScale_ || currentScale_->revision != shared.revision() ||
      currentScale_->meshRevision != model_.revision()) {
    currentScale_ = std::make_unique<const MeshScale>(shared.scale(), shared.revision(), model_);
  }
  return currentScale_.get();
}

}  // namespace zyn
