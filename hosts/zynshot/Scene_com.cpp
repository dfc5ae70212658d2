#include "zynshot/Scene_com.h"

#include <algorithm>

#include "common/MeshObjects_com.h"

namespace zyn::shot {

using host::check;

Scene::Scene(const mesh::Mesh& mesh, const mesh::Progress& progress) : bounds_(mesh.bounds()) {
  const host::ClassObject factory(L"ZYNVue.ZYNGLTriangle");
  mesh::ProgressMeter meter(progress, mesh.triangles.size());
  facets_.reserve(mesh.triangles.size());
  for (const mesh::Triangle& facet : mesh.triangles) {
    const auto& [a, b, c] = facet.vertices;
    facets_.push_back({host::makeTriangle(factory, facet), (a + b + c) * (1.0 / 3.0)});
    meter.reached(facets_.size());
  }
}

void Scene::paint(const Appearance& appearance) {
  if (painted_ == appearance) {
    return;
  }
  const auto& [r, g, b] = appearance.colour;
  for (const Facet& facet : facets_) {
    if (const auto& m = appearance.material) {
      check(facet.object->setMaterial(r, g, b, appearance.alpha, m->ambient, m->diffuse,
                                      m->specular, m->shininess, m->emissive),
            L"setMaterial");
    } else {
      check(facet.object->setColor(r, g, b, appearance.alpha), L"setColor");
    }
  }
  painted_ = appearance;
}

void Scene::show(IZYN3DGLBitmapContext& context, const PictureOptions& picture) {
  constexpr int kShaded = 0;
  constexpr int kOutline = 1;
  if (picture.appearance.alpha < 1.0) {
    sortAlong(picture.view.direction);
  }
  check(context.RemoveAll(), L"RemoveAll");
  for (const Facet& facet : facets_) {
    check(context.Add(facet.object.Get(), picture.outline ? kOutline : kShaded), L"Add");
  }
}

void Scene::sortAlong(const mesh::Vector& direction) {
  std::sort(facets_.begin(), facets_.end(), [&direction](const Facet& a, const Facet& b) {
    return dot(a.centre, direction) > dot(b.centre, direction);
  });
}

}  // namespace zyn::shot
