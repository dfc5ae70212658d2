#include "viewer/Model_com.h"

#include "common/MeshObjects_com.h"
#include "viewer/PartColour.h"
#include "viewer/Parts.h"
#include "viewer/PickablePart_com.h"

namespace zyn::viewer {

using host::check;
using Microsoft::WRL::ComPtr;

namespace {

constexpr int kShaded = 0;
constexpr int kOutline = 1;

}  // namespace

Model::Model(std::filesystem::path file, const mesh::Mesh& mesh, const mesh::Progress& progress)
    : file_(std::move(file)), bounds_(mesh.bounds()) {
  addParts(mesh);
  const host::ClassObject factory(L"ZYNVue.ZYNGLTriangle");
  mesh::ProgressMeter meter(progress, mesh_->triangles.size());
  triangles_.reserve(mesh_->triangles.size());
  for (const mesh::Triangle& facet : mesh_->triangles) {
    triangles_.push_back(host::makeTriangle(factory, facet));
    meter.reached(triangles_.size());
  }
  for (int part = 1; part <= partCount(); ++part) {
    paint(part, false);
  }
}

void Model::addParts(const mesh::Mesh& mesh) {
  const auto ordered = std::make_shared<mesh::Mesh>();
  ordered->triangles.reserve(mesh.triangles.size());
  for (const Part& part : connectedParts(mesh)) {
    parts_.push_back({ordered->triangles.size(), part.size(), nullptr});
    for (const std::uint32_t index : part) {
      ordered->triangles.push_back(mesh.triangles[index]);
    }
  }
  mesh_ = ordered;
  for (int part = 1; part <= partCount(); ++part) {
    parts_[static_cast<std::size_t>(part - 1)].pickable =
        new PickablePart(static_cast<UINT>(part), mesh_, facetsOf(part));
  }
}

std::span<const mesh::Triangle> Model::facetsOf(int part) const {
  if (part < 1 || part > partCount()) {
    return {};
  }
  const PartRange& range = parts_[static_cast<std::size_t>(part - 1)];
  return std::span(mesh_->triangles).subspan(range.first, range.count);
}

void Model::show(IZYNVue3D& view, bool outline, const mesh::Progress& progress) const {
  check(view.RemoveAllSelection(), L"RemoveAllSelection");
  check(view.RemoveAll(), L"RemoveAll");
  mesh::ProgressMeter meter(progress, triangles_.size());
  std::size_t done = 0;
  for (const PartRange& part : parts_) {
    for (const auto& triangle : trianglesOf(part)) {
      check(view.Add(triangle.Get(), outline ? kOutline : kShaded), L"Add");
      meter.reached(++done);
    }
    if (part.shown) {
      check(view.AddSelection(part.pickable.Get()), L"AddSelection");
    }
  }
}

void Model::addTo(IZYN3DGLBitmapContext& context, bool outline) const {
  for (const PartRange& part : parts_) {
    for (const auto& triangle : trianglesOf(part)) {
      check(context.Add(triangle.Get(), outline ? kOutline : kShaded), L"Add");
    }
  }
}

/// Those of a part that is shown.
std::span<const ComPtr<IZYNGLTriangle>> Model::trianglesOf(const PartRange& part) const {
  return std::span(triangles_).subspan(part.first, part.shown ? part.count : 0);
}

void Model::paint(const PartSelection& selection) {
  for (int part = 1; part <= partCount(); ++part) {
    const bool selected = selection.contains(part);
    if (parts_[static_cast<std::size_t>(part - 1)].selected != selected) {
      paint(part, selected);
    }
  }
}

void Model::paint(int part, bool selected) {
  PartRange& range = parts_[static_cast<std::size_t>(part - 1)];
  const auto& [r, g, b] = partColour(part, selected);
  for (const auto& triangle : std::span(triangles_).subspan(range.first, range.count)) {
    check(triangle->setColor(r, g, b, 1.0), L"setColor");
  }
  range.selected = selected;
}

}  // namespace zyn::viewer
