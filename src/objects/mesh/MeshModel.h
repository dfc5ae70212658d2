#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "core/Box3.h"
#include "model/BoxTree.h"
#include "model/Edges.h"
#include "model/Mesh.h"
#include "model/Triangulation.h"

namespace zyn {

/// A mesh with what is calculated from it, which is made when it is first asked for and kept until
/// the mesh changes. Every change either is made as a whole or, where memory runs out, not at all.
class MeshModel {
 public:
  /// Faces that are drawn, and made anew, together.
  static constexpr std::size_t kChunk = 8192;

  const Mesh& mesh() const { return mesh_; }

  void take(Mesh mesh);
  /// Another number of points than before drops all that belongs to points or faces.
  void setPoints(std::vector<double> points);
  void setFaces(std::vector<std::uint32_t> corners, std::vector<std::uint32_t> ends);
  /// One a point or one a corner; none: calculated.
  void setNormals(std::vector<double> normals);
  void setPointColours(std::vector<float> colours);
  void setFaceColours(std::vector<float> colours);
  void setValues(std::vector<double> values);
  void setFaceNames(std::vector<std::int32_t> names) { mesh_.faceNames = std::move(names); }
  void movePoints(std::size_t first, std::span<const double> points);

  /// In degrees: edges that turn by less are smooth.
  double smoothAngle() const { return smoothAngle_; }
  void setSmoothAngle(double angle);

  /// None without points.
  const std::optional<Box3>& bounds() const;
  const Triangulation& triangles() const;
  const BoxTree& tree() const;
  const std::vector<MeshEdge>& edges() const;

  /// Of every corner as it is drawn; made before the first is asked for. Changes of the shape make
  /// them at once where memory allows, so that the next frame need not.
  void prepareNormals() const;
  std::array<float, 3> normalAt(std::size_t corner) const {
    const NormalSource source = normalSource();
    if (source == NormalSource::kCalculated) {
      const float* const xyz = normals_.data() + 3 * corner;
      return {xyz[0], xyz[1], xyz[2]};
    }
    const std::size_t place = source == NormalSource::kPoints ? mesh_.corners[corner] : corner;
    const double* const xyz = mesh_.normals.data() + 3 * place;
    return {static_cast<float>(xyz[0]), static_cast<float>(xyz[1]), static_cast<float>(xyz[2])};
  }
  /// As hosts get them: as they were set, otherwise as calculated, one a corner.
  std::vector<double> normals() const;

  std::size_t chunkCount() const { return chunkRevisions_.size(); }
  std::size_t chunkBegin(std::size_t chunk) const { return chunk * kChunk; }
  std::size_t chunkEnd(std::size_t chunk) const {
    return std::min(mesh_.faceCount(), (chunk + 1) * kChunk);
  }
  /// Another number after each change of the chunk's faces, or of anything.
  std::uint64_t chunkRevision(std::size_t chunk) const { return chunkRevisions_[chunk]; }
  std::uint64_t revision() const { return revision_; }

 private:
  enum class NormalSource { kCalculated, kPoints, kCorners };
  NormalSource normalSource() const {
    if (mesh_.normals.empty()) {
      return NormalSource::kCalculated;
    }
    return mesh_.normals.size() == mesh_.points.size() ? NormalSource::kPoints
                                                       : NormalSource::kCorners;
  }

  void touchAll(std::size_t faceCount);
  void forgetShape() noexcept;
  void tryNormals() const noexcept;
  void touchChunksOf(const std::vector<std::uint32_t>& faces) noexcept;
  std::vector<std::uint32_t> updatedFaces(std::size_t first, std::size_t count);

  Mesh mesh_;
  double smoothAngle_ = 30;
  std::uint64_t revision_ = 1;
  std::vector<std::uint64_t> chunkRevisions_;

  mutable std::optional<Box3> bounds_;
  mutable std::vector<float> normals_;  ///< calculated, one a corner
  mutable std::optional<Triangulation> triangles_;
  mutable std::optional<BoxTree> tree_;
  mutable std::optional<std::vector<MeshEdge>> edges_;
  /// The points that have moved since the tree was fitted.
  mutable std::size_t firstMoved_ = 0;
  mutable std::size_t endMoved_ = 0;
};

}  // namespace zyn
