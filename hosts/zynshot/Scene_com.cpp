#include "zynshot/Scene_com.h"

#include <algorithm>
#include <numeric>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "common/ClassObject_com.h"
#include "common/NumberArray_com.h"

namespace zyn::shot {

using host::check;
using host::checkTold;
using Microsoft::WRL::ComPtr;

namespace {

constexpr int kShaded = 0;
constexpr int kOutline = 1;
constexpr double kPathWidth = 1.5;

ComPtr<IZYNGLMaillage> meshIn(const ComPtr<IDispatch>& object, const wchar_t* member) {
  ComPtr<IZYNGLMaillage> mesh;
  check(object.As(&mesh), member);
  return mesh;
}

/// How far the middle of each face lies along a direction.
std::vector<double> depthsOf(IZYNGLMaillage& mesh, const host::Vector& direction) {
  _variant_t value;
  checkTold(mesh.getSommets(&value), L"getSommets");
  const std::vector<double> points = host::numbersOf(value);
  checkTold(mesh.getPolygones(&value), L"getPolygones");
  const std::vector<std::int32_t> numbers = host::integersOf(value);
  std::vector<double> depths;
  for (std::size_t i = 0; i < numbers.size();) {
    const auto count = static_cast<std::size_t>(numbers[i++]);
    double sum = 0;
    for (const std::int32_t corner : std::span(numbers).subspan(i, count)) {
      const double* const point = points.data() + 3 * static_cast<std::size_t>(corner);
      sum += dot({point[0], point[1], point[2]}, direction);
    }
    depths.push_back(sum / static_cast<double>(count));
    i += count;
  }
  return depths;
}

void paint(IZYNGLMaillage& mesh, const Appearance& appearance) {
  const auto& [r, g, b] = appearance.colour.value_or(kModelColour);
  if (const auto& m = appearance.material) {
    checkTold(mesh.setMaterial(r, g, b, 1, m->ambient, m->diffuse, m->specular, m->shininess,
                               m->emissive),
              L"setMaterial");
  } else {
    checkTold(mesh.setColor(r, g, b, 1), L"setColor");
  }
}

void draw(IZYNGLMaillage& mesh, const Strokes& strokes) {
  const auto& [r, g, b] = strokes.colour;
  checkTold(mesh.put_StyleRendu(strokes.style), L"StyleRendu");
  checkTold(mesh.setCouleurAretes(r, g, b, 1), L"setCouleurAretes");
  checkTold(mesh.put_EpaisseurAretes(strokes.width), L"EpaisseurAretes");
}

/// Behind the last line that moves the tool there is no place.
void demandLine(IZYNGLTrajet& path, long line) {
  _variant_t value;
  checkTold(path.getLignes(&value), L"getLignes");
  const std::vector<std::int32_t> lines = host::integersOf(value);
  const std::int32_t last = lines.empty() ? 0 : *std::ranges::max_element(lines);
  if (line > last) {
    throw std::runtime_error("--position line:" + std::to_string(line) +
                             ": the last line with motion is " + std::to_string(last));
  }
}

void goTo(IZYNGLTrajet& path, const PathPlace& place) {
  double duration = 0;
  checkTold(path.get_Duree(&duration), L"Duree");
  switch (place.unit) {
    case PathPlace::Unit::kShare:
      checkTold(path.put_PositionTemps(place.value * duration), L"PositionTemps");
      break;
    case PathPlace::Unit::kSeconds:
      checkTold(path.put_PositionTemps(place.value), L"PositionTemps");
      break;
    case PathPlace::Unit::kMillimetres:
      checkTold(path.put_Position(place.value), L"Position");
      break;
    case PathPlace::Unit::kLine:
      demandLine(path, static_cast<long>(place.value));
      checkTold(path.put_PositionLigne(static_cast<long>(place.value)), L"PositionLigne");
      break;
  }
}

}  // namespace

Scene::Scene(const ComPtr<IZYNGLMaillage>& mesh, std::optional<double> smoothAngle,
             std::optional<host::PathObjects> path)
    : mesh_(mesh),
      group_(host::ClassObject(L"ZYNVue.ZYNGroupe").create<IZYNGroupe>()),
      path_(std::move(path)) {
  if (!mesh) {
    bounds_ = path_ ? path_->bounds() : host::Bounds();
    return;
  }
  if (smoothAngle) {
    checkTold(mesh->setNormales(host::numberArray({})), L"setNormales");
  }
  checkTold(mesh->put_AngleLissage(smoothAngle.value_or(0)), L"AngleLissage");
  _variant_t value;
  checkTold(mesh->get_Boite(&value), L"Boite");
  const std::vector<double> box = host::numbersOf(value);
  if (box.size() == 6) {
    bounds_ = {{box[0], box[2], box[4]}, {box[1], box[3], box[5]}};
  }
  if (path_) {
    bounds_ = around(bounds_, path_->bounds());
  }
}

void Scene::show(IZYN3DGLBitmapContext& context, const PictureOptions& picture) {
  check(context.RemoveAll(), L"RemoveAll");
  if (mesh_) {
    showMesh(context, picture);
  }
  if (path_) {
    showPath(context);
  }
}

void Scene::showMesh(IZYN3DGLBitmapContext& context, const PictureOptions& picture) {
  const ComPtr<IZYNGLMaillage> mesh = meshOf(picture);
  paint(*mesh.Get(), picture.appearance);
  draw(*mesh.Get(), picture.strokes);
  checkTold(group_->RemoveAll(), L"RemoveAll");
  checkTold(group_->Add(mesh.Get(), kShaded), L"Add");
  checkTold(group_->put_Opacite(picture.appearance.alpha), L"Opacite");
  check(context.Add(group_.Get(), picture.outline ? kOutline : kShaded), L"Add");
}

void Scene::prepare(const PathOptions& options) {
  if (!path_) {
    return;
  }
  const long byDefault = options.place ? host::PathLook::kByProgress : host::PathLook::kByType;
  path_->setLook({.colour = options.colours.value_or(byDefault),
                  .width = kPathWidth,
                  .rapids = options.rapids,
                  .tool = options.place.has_value(),
                  .ballNose = options.isBall,
                  .diameter = options.diameter.value_or(0)});
  if (options.place) {
    goTo(path_->path(), *options.place);
    path_->showTool();
  }
}

host::Bounds Scene::shownBounds(const PathOptions& options) const {
  if (!path_ || !options.place) {
    return bounds_;
  }
  const std::optional<host::Bounds> tool =
      options.isFrame ? path_->reachOfTool() : path_->toolBounds();
  return tool ? around(bounds_, *tool) : bounds_;
}

void Scene::showPath(IZYN3DGLBitmapContext& context) const {
  check(context.Add(&path_->path(), kShaded), L"Add");
  if (IZYNEchelleCouleurs* const scale = path_->scale()) {
    check(context.Add(scale, kShaded), L"Add");
  }
}

/// Where a colour is asked for, those of the file do not count.
ComPtr<IZYNGLMaillage> Scene::meshOf(const PictureOptions& picture) {
  if (picture.appearance.colour && !plain_) {
    ComPtr<IDispatch> copy;
    checkTold(mesh_->Copie(&copy), L"Copie");
    plain_ = meshIn(copy, L"Copie");
    checkTold(plain_->setCouleursSommets(host::numberArray({})), L"setCouleursSommets");
    checkTold(plain_->setCouleursFaces(host::numberArray({})), L"setCouleursFaces");
  }
  const ComPtr<IZYNGLMaillage>& mesh = picture.appearance.colour ? plain_ : mesh_;
  return picture.appearance.alpha < 1 ? sortedAlong(*mesh.Get(), picture.view.direction) : mesh;
}

/// The farthest faces first, since what lies behind must be drawn before what it shines through.
ComPtr<IZYNGLMaillage> Scene::sortedAlong(IZYNGLMaillage& mesh,
                                          const host::Vector& direction) const {
  const std::vector<double> depths = depthsOf(mesh, direction);
  std::vector<std::int32_t> faces(depths.size());
  std::iota(faces.begin(), faces.end(), 0);
  std::ranges::stable_sort(faces, std::ranges::greater(), [&depths](std::int32_t face) {
    return depths[static_cast<std::size_t>(face)];
  });
  ComPtr<IDispatch> sorted;
  checkTold(mesh.Extraire(host::integerArray(faces), &sorted), L"Extraire");
  return meshIn(sorted, L"Extraire");
}

}  // namespace zyn::shot
