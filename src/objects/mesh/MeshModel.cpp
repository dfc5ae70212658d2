#include "objects/mesh/MeshModel.h"

#include <algorithm>
#include <new>
#include <utility>

#include "model/Measures.h"
#include "model/SmoothNormals.h"

namespace zyn {

void MeshModel::take(Mesh mesh) {
  touchAll(mesh.faceCount());
  forgetShape();
  mesh_ = std::move(mesh);
  tryNormals();
}

void MeshModel::setPoints(std::vector<double> points) {
  if (points.size() != mesh_.points.size()) {
    Mesh mesh;
    mesh.points = std::move(points);
    take(std::move(mesh));
    return;
  }
  touchAll(mesh_.faceCount());
  forgetShape();
  mesh_.points = std::move(points);
  tryNormals();
}

void MeshModel::setFaces(std::vector<std::uint32_t> corners, std::vector<std::uint32_t> ends) {
  Mesh mesh;
  mesh.corners = std::move(corners);
  mesh.faceEnds = std::move(ends);
  touchAll(mesh.faceCount());
  forgetShape();
  if (normalSource() == NormalSource::kPoints) {
    mesh.normals = std::move(mesh_.normals);
  }
  mesh.points = std::move(mesh_.points);
  mesh.pointColours = std::move(mesh_.pointColours);
  mesh.values = std::move(mesh_.values);
  mesh_ = std::move(mesh);
  tryNormals();
}

void MeshModel::setNormals(std::vector<double> normals) {
  touchAll(mesh_.faceCount());
  normals_ = {};
  mesh_.normals = std::move(normals);
  tryNormals();
}

void MeshModel::setPointColours(std::vector<float> colours) {
  touchAll(mesh_.faceCount());
  mesh_.pointColours = std::move(colours);
}

void MeshModel::setFaceColours(std::vector<float> colours) {
  touchAll(mesh_.faceCount());
  mesh_.faceColours = std::move(colours);
}

void MeshModel::setValues(std::vector<double> values) {
  touchAll(mesh_.faceCount());
  mesh_.values = std::move(values);
}

void MeshModel::setSmoothAngle(double angle) {
  touchAll(mesh_.faceCount());
  normals_ = {};
  smoothAngle_ = angle;
  tryNormals();
}

void MeshModel::movePoints(std::size_t first, std::span<const double> points) {
  const auto place = mesh_.points.begin() + static_cast<std::ptrdiff_t>(3 * first);
  std::vector<double> before(points.begin(), points.end());
  const auto exchange = [&] { std::swap_ranges(before.begin(), before.end(), place); };
  exchange();
  try {
    const std::size_t count = points.size() / 3;
    std::optional<Triangulation> triangles;
    if (triangles_) {
      triangles.emplace(mesh_);
    }
    touchChunksOf(updatedFaces(first, count));
    triangles_ = std::move(triangles);
    edges_.reset();
    const bool isFirst = firstMoved_ == endMoved_;
    firstMoved_ = isFirst ? first : std::min(firstMoved_, first);
    endMoved_ = isFirst ? first + count : std::max(endMoved_, first + count);
    bounds_.reset();
  } catch (...) {
    exchange();
    throw;
  }
}

const std::optional<Box3>& MeshModel::bounds() const {
  if (!bounds_) {
    bounds_ = boundsOf(mesh_);
  }
  return bounds_;
}

const Triangulation& MeshModel::triangles() const {
  if (!triangles_) {
    triangles_.emplace(mesh_);
  }
  return *triangles_;
}

const BoxTree& MeshModel::tree() const {
  if (!tree_) {
    tree_.emplace(mesh_);
  } else if (firstMoved_ < endMoved_) {
    tree_->refit(mesh_, firstMoved_, endMoved_ - firstMoved_);
  }
  firstMoved_ = endMoved_ = 0;
  return *tree_;
}

const std::vector<MeshEdge>& MeshModel::edges() const {
  if (!edges_) {
    edges_ = meshEdges(mesh_);
  }
  return *edges_;
}

void MeshModel::prepareNormals() const {
  if (normalSource() == NormalSource::kCalculated && normals_.empty()) {
    normals_ = cornerNormals<float>(mesh_, smoothAngle_);
  }
}

void MeshModel::tryNormals() const noexcept {
  try {
    prepareNormals();
  } catch (const std::bad_alloc&) {
    // The next frame tries again, and says so.
  }
}

std::vector<double> MeshModel::normals() const {
  return normalSource() == NormalSource::kCalculated ? cornerNormals<double>(mesh_, smoothAngle_)
                                                     : mesh_.normals;
}

/// Comes before a change: it may fail.
void MeshModel::touchAll(std::size_t faceCount) {
  chunkRevisions_.resize((faceCount + kChunk - 1) / kChunk);
  ++revision_;
  std::fill(chunkRevisions_.begin(), chunkRevisions_.end(), revision_);
}

void MeshModel::forgetShape() noexcept {
  bounds_.reset();
  normals_ = {};
  triangles_.reset();
  tree_.reset();
  edges_.reset();
  firstMoved_ = endMoved_ = 0;
}

void MeshModel::touchChunksOf(const std::vector<std::uint32_t>& faces) noexcept {
  ++revision_;
  for (const std::uint32_t face : faces) {
    chunkRevisions_[face / kChunk] = revision_;
  }
}

/// The faces that look otherwise after some points have moved.
std::vector<std::uint32_t> MeshModel::updatedFaces(std::size_t first, std::size_t count) {
  return normals_.empty() ? facesAtPoints(mesh_, first, count)
                          : updateCornerNormals(mesh_, smoothAngle_, first, count, normals_);
}

}  // namespace zyn
