#include "mesh/ObjReader.h"

#include <charconv>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "common/Words.h"
#include "mesh/TextScanner.h"
#include "mesh/Triangulation.h"

namespace zyn::mesh {

using host::quoted;

namespace {

class ObjReader {
 public:
  ObjReader(std::string_view text, const Progress& progress)
      : scanner_(text), meter_(progress, text.size()) {}

  Mesh read() {
    while (scanner_.nextLine()) {
      readLine(scanner_.word());
      meter_.reached(scanner_.offset());
    }
    return std::move(mesh_);
  }

 private:
  struct Corner {
    Vector position;
    std::optional<Vector> normal;
  };

  void readLine(std::string_view keyword) {
    if (keyword == "v") {
      positions_.push_back(scanner_.position("vertex"));
    } else if (keyword == "vn") {
      normals_.push_back(scanner_.direction("normal"));
    } else if (keyword == "vt") {
      ++textureCount_;
    } else if (keyword == "f") {
      readFace();
    } else if (keyword.starts_with('#')) {
      scanner_.skipRestOfLine();
    }
  }

  void readFace() {
    corners_.clear();
    outline_.clear();
    for (std::string_view word = scanner_.word(); !word.empty(); word = scanner_.word()) {
      if (word.starts_with('#')) {
        scanner_.skipRestOfLine();
        break;
      }
      corners_.push_back(readCorner(word));
      outline_.push_back(corners_.back().position);
    }
    if (corners_.size() < 3) {
      scanner_.fail("a face needs at least 3 corners, not " + std::to_string(corners_.size()));
    }
    const auto triangles = triangulate(outline_);
    if (triangles.empty()) {
      scanner_.fail("a concave face of more than " + std::to_string(kMostConcaveCorners) +
                    " corners");
    }
    for (const auto& [a, b, c] : triangles) {
      addTriangle(corners_[a], corners_[b], corners_[c]);
    }
  }

  void addTriangle(const Corner& a, const Corner& b, const Corner& c) {
    const Vector flat = facetNormal(a.position, b.position, c.position);
    const auto normalOf = [&](const Corner& corner) {
      return corner.normal ? normalised(*corner.normal, flat) : flat;
    };
    mesh_.triangles.push_back(
        {{a.position, b.position, c.position}, {normalOf(a), normalOf(b), normalOf(c)}});
  }

  Corner readCorner(std::string_view word) {
    const std::size_t slash = word.find('/');
    const std::size_t second = slash == word.npos ? word.npos : word.find('/', slash + 1);
    Corner corner;
    corner.position = positions_[index(word, word.substr(0, slash), positions_.size(), "vertex")];
    if (slash == word.npos) {
      return corner;
    }
    if (second != slash + 1) {
      index(word, word.substr(slash + 1, second - slash - 1), textureCount_, "texture vertex");
    }
    if (second != word.npos) {
      corner.normal = normals_[index(word, word.substr(second + 1), normals_.size(), "normal")];
    }
    return corner;
  }

  /// Turns a written index (from 1, or from -1 backwards) into one from 0 below `count`.
  std::size_t index(std::string_view corner, std::string_view digits, std::size_t count,
                    const char* what) const {
    long long value = 0;
    const char* const end = digits.data() + digits.size();
    const std::from_chars_result result = std::from_chars(digits.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end) {
      scanner_.fail(quoted(corner) + " is not a corner of a face");
    }
    const auto limit = static_cast<long long>(count);
    if (value == 0 || value > limit || value < -limit) {
      scanner_.fail(std::string(what) + ' ' + std::to_string(value) + " does not exist (" +
                    std::to_string(count) + " so far)");
    }
    return static_cast<std::size_t>(value > 0 ? value - 1 : value + limit);
  }

  TextScanner scanner_;
  ProgressMeter meter_;
  std::vector<Vector> positions_;
  std::vector<Vector> normals_;
  std::size_t textureCount_ = 0;
  std::vector<Corner> corners_;
  std::vector<Vector> outline_;
  Mesh mesh_;
};

}  // namespace

Mesh readObj(std::string_view text, const Progress& progress) {
  return ObjReader(text, progress).read();
}

}  // namespace zyn::mesh
