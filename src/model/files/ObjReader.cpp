#include <algorithm>
#include <charconv>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "core/ProgressMeter.h"
#include "model/files/MeshBuilder.h"
#include "model/files/Obj.h"
#include "model/files/ObjMaterials.h"
#include "model/files/TextScanner.h"

namespace zyn {

namespace {

constexpr std::uint32_t kNone = UINT32_MAX;

class ObjReader {
 public:
  ObjReader(std::string_view text, const Progress& progress)
      : scanner_(text), meter_(progress, text.size()) {}

  Mesh read(const SiblingFile& sibling) {
    while (scanner_.nextLine()) {
      readLine(scanner_.word());
      meter_.reached(scanner_.offset());
    }
    finishNormals();
    finishColours();
    if (materials_.isUsed()) {
      mesh_.faceColours = materials_.faceColours(faceMaterials_, sibling);
    }
    if (!isGrouped_) {
      mesh_.groups.clear();
      mesh_.faceGroups.clear();
    }
    if (hasGroups_) {
      mesh_.faceNames = mesh_.faceGroups;
    }
    return std::move(mesh_);
  }

 private:
  void readLine(std::string_view keyword) {
    if (keyword == "v") {
      readPoint();
    } else if (keyword == "vn") {
      readNormal();
    } else if (keyword == "vt") {
      ++textureCount_;
    } else if (keyword == "f") {
      readFace();
    } else if (keyword == "g" || keyword == "o") {
      isGrouped_ = true;
      hasGroups_ |= keyword == "g";
      groupName_ = scanner_.restOfLine();
      group_ = -1;
    } else if (keyword == "usemtl") {
      material_ = materials_.number(scanner_.restOfLine());
    } else if (keyword == "mtllib") {
      materials_.addLibrary(scanner_.restOfLine());
    } else if (keyword.starts_with('#')) {
      scanner_.skipRestOfLine();
    }
  }

  /// The next word that is not in a comment.
  std::string_view word() {
    const std::string_view found = scanner_.word();
    if (!found.starts_with('#')) {
      return found;
    }
    scanner_.skipRestOfLine();
    return {};
  }

  void readPoint() {
    const auto [x, y, z] = scanner_.position("vertex");
    mesh_.points.insert(mesh_.points.end(), {x, y, z});
    std::string_view words[4];
    int count = 0;
    while (count < 4 && !(words[count] = word()).empty()) {
      ++count;
    }
    if (count < 3) {  // one number is a weight, of use for curves
      return;
    }
    mesh_.pointColours.resize(4 * (mesh_.pointCount() - 1), 1.0f);
    for (int i = 0; i < 4; ++i) {
      const float value = i < count ? scanner_.singleOf(words[i], "colour") : 1.0f;
      mesh_.pointColours.push_back(value);
    }
  }

  void readNormal() {
    for (int i = 0; i < 3; ++i) {
      normals_.push_back(scanner_.number("normal"));
    }
  }

  void readFace() {
    corners_.clear();
    for (std::string_view next = word(); !next.empty(); next = word()) {
      readCorner(next);
    }
    if (corners_.size() < 3) {
      scanner_.fail("a face needs at least 3 corners, not " + std::to_string(corners_.size()));
    }
    addFace(mesh_, corners_);
    if (group_ < 0) {
      group_ = groupNumber();
    }
    mesh_.faceGroups.push_back(group_);
    faceMaterials_.push_back(material_);
  }

  /// v, v/vt, v//vn or v/vt/vn.
  void readCorner(std::string_view word) {
    const std::size_t slash = std::min(word.find('/'), word.size());
    const std::size_t second = std::min(word.find('/', slash + 1), word.size());
    corners_.push_back(index(word, word.substr(0, slash), mesh_.pointCount(), "vertex"));
    if (slash < word.size() && second != slash + 1) {
      index(word, word.substr(slash + 1, second - slash - 1), textureCount_, "texture vertex");
    }
    const std::uint32_t normal =
        second < word.size() ? index(word, word.substr(second + 1), normals_.size() / 3, "normal")
                             : kNone;
    hasAllNormals_ &= normal != kNone;
    hasPointNormals_ &= normal == corners_.back();
    if (hasAllNormals_) {
      cornerNormals_.push_back(normal);
    }
  }

  /// Turns a written index (from 1, or from -1 backwards) into one from 0 below `count`.
  std::uint32_t index(std::string_view corner, std::string_view digits, std::size_t count,
                      const char* what) const {
    long long value = 0;
    const char* const end = digits.data() + digits.size();
    const std::from_chars_result result = std::from_chars(digits.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end) {
      scanner_.fail(quoted(corner) + " is not a corner of a face");
    }
    const auto limit = static_cast<long long>(std::min(count, kMostMeshElements));
    if (value == 0 || value > limit || value < -limit) {
      scanner_.fail(std::string(what) + ' ' + std::to_string(value) + " does not exist (" +
                    std::to_string(count) + " so far)");
    }
    return static_cast<std::uint32_t>(value > 0 ? value - 1 : value + limit);
  }

  std::int32_t groupNumber() {
    if (groupName_.empty()) {
      groupName_ = "default";
    }
    const auto next = static_cast<std::int32_t>(mesh_.groups.size());
    const auto [entry, isNew] = groupNumbers_.emplace(groupName_, next);
    if (isNew) {
      mesh_.groups.emplace_back(groupName_);
    }
    return entry->second;
  }

  void finishNormals() {
    dropUnlessFinite(normals_);
    if (!hasAllNormals_ || normals_.empty() || cornerNormals_.empty()) {
      return;
    }
    if (hasPointNormals_ && normals_.size() == mesh_.points.size()) {
      mesh_.normals = std::move(normals_);
      return;
    }
    mesh_.normals.reserve(3 * cornerNormals_.size());
    for (const std::uint32_t normal : cornerNormals_) {
      const auto first = normals_.begin() + std::ptrdiff_t{3} * normal;
      mesh_.normals.insert(mesh_.normals.end(), first, first + 3);
    }
  }

  /// Points without a colour are white; some programs count from 0 to 255.
  void finishColours() {
    std::vector<float>& colours = mesh_.pointColours;
    if (colours.empty()) {
      return;
    }
    colours.resize(4 * mesh_.pointCount(), 1.0f);
    const bool isBytes = std::any_of(colours.begin(), colours.end(), [](float c) { return c > 1; });
    for (std::size_t i = 0; i < colours.size(); ++i) {
      const bool isAlpha = i % 4 == 3;
      const float value =
          isBytes && !(isAlpha && colours[i] == 1.0f) ? colours[i] / 255 : colours[i];
      colours[i] = value >= 0.0f ? std::min(value, 1.0f) : 0.0f;
    }
  }

  TextScanner scanner_;
  ProgressMeter meter_;
  Mesh mesh_;
  std::vector<double> normals_;
  std::size_t textureCount_ = 0;

  std::vector<std::uint32_t> corners_;        ///< of the face that is being read
  std::vector<std::uint32_t> cornerNormals_;  ///< places in `normals_`
  bool hasAllNormals_ = true;
  bool hasPointNormals_ = true;  ///< each corner's normal has the number of its point

  std::string_view groupName_;
  std::int32_t group_ = -1;  ///< -1: not known yet
  bool isGrouped_ = false;   ///< by groups or objects
  bool hasGroups_ = false;
  std::map<std::string_view, std::int32_t> groupNumbers_;

  ObjMaterials materials_;
  std::uint32_t material_ = ObjMaterials::kNone;
  std::vector<std::uint32_t> faceMaterials_;
};

}  // namespace

Mesh readObj(std::string_view text, const SiblingFile& sibling, const Progress& progress) {
  return ObjReader(text, progress).read(sibling);
}

}  // namespace zyn
