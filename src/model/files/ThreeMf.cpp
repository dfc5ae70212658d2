#include "model/files/ThreeMf.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <map>
#include <memory>
#include <new>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <utility>
#include <vector>

#include "core/ProgressMeter.h"
#include "model/files/MeshBuilder.h"
#include "model/files/TextScanner.h"
#include "model/files/ZipArchive.h"

namespace zyn {

namespace {

using Node = pugi::xml_node;
using Colour = std::array<float, 4>;

/// The name without the prefix of its namespace.
std::string_view localName(std::string_view name) { return name.substr(name.find(':') + 1); }

std::string_view attribute(Node node, std::string_view name) {
  for (const pugi::xml_attribute& attribute : node.attributes()) {
    if (localName(attribute.name()) == name) {
      return attribute.value();
    }
  }
  return {};
}

Node child(Node node, std::string_view name) {
  for (const Node& each : node.children()) {
    if (localName(each.name()) == name) {
      return each;
    }
  }
  return {};
}

/// A part of the package that is XML.
class XmlPart {
 public:
  XmlPart(const ZipArchive& archive, std::string name)
      : name_(std::move(name)), text_(archive.read(name_)) {
    const pugi::xml_parse_result result = document_.load_buffer(
        text_.data(), text_.size(), pugi::parse_minimal | pugi::parse_escapes);
    if (result.status == pugi::status_out_of_memory) {
      throw std::bad_alloc();
    }
    if (!result) {
      failAt(result.offset, std::string("the XML is damaged: ") + result.description());
    }
  }

  Node root() const { return document_.document_element(); }
  std::size_t size() const { return text_.size(); }

  [[noreturn]] void fail(Node node, const std::string& message) const {
    failAt(node.offset_debug(), message);
  }

 private:
  [[noreturn]] void failAt(std::ptrdiff_t offset, const std::string& message) const {
    const auto end = text_.begin() + std::clamp<std::ptrdiff_t>(offset, 0, std::ssize(text_));
    throw MeshFileError("part " + quoted(name_, kLongestName) + ", line " +
                        std::to_string(1 + std::count(text_.begin(), end, '\n')) + ": " + message);
  }

  std::string name_;
  std::string text_;
  pugi::xml_document document_;
};

/// One part with objects, and the colours that its faces may have.
struct ModelPart {
  ModelPart(const ZipArchive& archive, const std::string& name) : xml(archive, name) {
    for (const Node& resource : child(xml.root(), "resources").children()) {
      const std::string_view kind = localName(resource.name());
      if (kind == "object") {
        objects.emplace(attribute(resource, "id"), resource);
      } else if (kind == "basematerials") {
        addColours(resource, "displaycolor");
      } else if (kind == "colorgroup") {
        addColours(resource, "color");
      }
    }
  }

  XmlPart xml;
  std::map<std::string_view, Node> objects;
  std::map<std::string_view, std::vector<Colour>> colours;

 private:
  void addColours(Node resource, std::string_view name) {
    std::vector<Colour>& group = colours[attribute(resource, "id")];
    for (const Node& each : resource.children()) {
      group.push_back(colourOf(attribute(each, name)));
    }
  }

  /// #RRGGBB or #RRGGBBAA.
  static Colour colourOf(std::string_view text) {
    Colour colour = kDefaultColour;
    if (text.size() != 7 && text.size() != 9) {
      return colour;
    }
    for (std::size_t i = 1; i < text.size(); i += 2) {
      unsigned value = 0;
      std::from_chars(text.data() + i, text.data() + i + 2, value, 16);
      colour[i / 2] = static_cast<float>(value / 255.0);
    }
    return colour;
  }
};

/// Four rows of three numbers: where the axes go, and the origin.
using Transform = std::array<double, 12>;

constexpr Transform kUnmoved = {1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0};

/// First `inner`, then `outer`.
Transform combined(const Transform& inner, const Transform& outer) {
  Transform result{};
  for (std::size_t row = 0; row < 4; ++row) {
    for (std::size_t column = 0; column < 3; ++column) {
      double sum = row == 3 ? outer[9 + column] : 0;
      for (std::size_t i = 0; i < 3; ++i) {
        sum += inner[3 * row + i] * outer[3 * i + column];
      }
      result[3 * row + column] = sum;
    }
  }
  return result;
}

bool isMirror(const Transform& t) {
  return t[0] * (t[4] * t[8] - t[5] * t[7]) - t[1] * (t[3] * t[8] - t[5] * t[6]) +
             t[2] * (t[3] * t[7] - t[4] * t[6]) <
         0;
}

class ThreeMfReader {
 public:
  ThreeMfReader(std::string_view bytes, const Progress& progress, std::size_t mostElements)
      : archive_(bytes), progress_(progress), mostElements_(mostElements) {}

  Mesh read() {
    const std::string root = rootPart();
    const ModelPart& model = part(root);
    root_ = &model;
    meter_.emplace(progress_, model.xml.size());
    const Node build = child(model.xml.root(), "build");
    for (const Node& item : build.children()) {
      if (localName(item.name()) == "item") {
        place(root, item, kUnmoved, 0);
        tellReached(model, item);
      }
    }
    if (mesh_.points.empty()) {
      model.xml.fail(build, "nothing is built");
    }
    if (!hasColours_) {
      mesh_.faceColours.clear();
    }
    return std::move(mesh_);
  }

 private:
  static constexpr int kDeepest = 32;          ///< components within components
  static constexpr int kMostPlaced = 200'000;  ///< objects, whether they have faces or not

  /// The part that the package names as its model.
  std::string rootPart() const {
    const XmlPart relationships(archive_, "_rels/.rels");
    for (const Node& each : relationships.root().children()) {
      if (attribute(each, "Type").ends_with("/3dmodel")) {
        return withoutSlash(attribute(each, "Target"));
      }
    }
    throw MeshFileError("the zip file holds no 3MF model");
  }

  /// Names in the package begin with a slash, those of the zip file without.
  static std::string withoutSlash(std::string_view name) {
    return std::string(name.substr(name.starts_with('/') ? 1 : 0));
  }

  const ModelPart& part(const std::string& name) {
    std::unique_ptr<ModelPart>& found = parts_[name];
    if (!found) {
      found = std::make_unique<ModelPart>(archive_, name);
    }
    return *found;
  }

  /// Adds the object that an item or a component refers to, which stands in a part.
  void place(const std::string& partName, Node reference, const Transform& outer, int depth) {
    const XmlPart& from = part(partName).xml;
    const Transform moved = combined(transformOf(from, reference), outer);
    const std::string_view path = attribute(reference, "path");
    const std::string home = path.empty() ? partName : withoutSlash(path);
    const ModelPart& model = part(home);
    const std::string_view id = attribute(reference, "objectid");
    const auto object = model.objects.find(id);
    if (object == model.objects.end()) {
      from.fail(reference, "object " + quoted(id) + " does not exist");
    }
    if (depth > kDeepest) {
      from.fail(reference, "components within components without end");
    }
    if (++placed_ > kMostPlaced) {
      from.fail(reference, "the model has too many components");
    }
    if (const Node mesh = child(object->second, "mesh")) {
      addMesh(model, object->second, mesh, moved);
    }
    for (const Node& component : child(object->second, "components").children()) {
      place(home, component, moved, depth + 1);
    }
  }

  static Transform transformOf(const XmlPart& xml, Node node) {
    const std::string_view text = attribute(node, "transform");
    if (text.empty()) {
      return kUnmoved;
    }
    Transform transform{};
    const char* at = text.data();
    const char* const end = at + text.size();
    for (double& number : transform) {
      while (at != end && (*at == ' ' || *at == '\t' || *at == '\r' || *at == '\n' || *at == '+')) {
        ++at;
      }
      const std::from_chars_result result = std::from_chars(at, end, number);
      if (result.ec != std::errc() || !std::isfinite(number)) {
        xml.fail(node, "the transform is not of 12 numbers");
      }
      at = result.ptr;
    }
    return transform;
  }

  void addMesh(const ModelPart& model, Node object, Node mesh, const Transform& transform) {
    const std::size_t firstPoint = mesh_.pointCount();
    for (const Node& vertex : child(mesh, "vertices").children()) {
      addPoint(model.xml, vertex, transform);
    }
    const std::size_t firstFace = mesh_.faceCount();
    const bool turns = isMirror(transform);
    for (const Node& triangle : child(mesh, "triangles").children()) {
      addTriangle(model, object, triangle, firstPoint, turns);
    }
    if (mesh_.faceCount() > firstFace) {
      const std::string_view name = attribute(object, "name");
      const auto group = static_cast<std::int32_t>(mesh_.groups.size());
      mesh_.groups.push_back(name.empty() ? "object " + std::string(attribute(object, "id"))
                                          : std::string(name));
      mesh_.faceGroups.resize(mesh_.faceCount(), group);
    }
  }

  void addPoint(const XmlPart& xml, Node vertex, const Transform& t) {
    const double x = coordinate(xml, vertex, "x");
    const double y = coordinate(xml, vertex, "y");
    const double z = coordinate(xml, vertex, "z");
    for (std::size_t i = 0; i < 3; ++i) {
      const double moved = x * t[i] + y * t[3 + i] + z * t[6 + i] + t[9 + i];
      if (!std::isfinite(moved)) {
        xml.fail(vertex, "a coordinate is not finite");
      }
      mesh_.points.push_back(moved);
    }
    requireRoom(xml, vertex, mesh_.pointCount());
  }

  void addTriangle(const ModelPart& model, Node object, Node triangle, std::size_t firstPoint,
                   bool turns) {
    std::array<std::uint32_t, 3> corners{};
    constexpr std::array<std::string_view, 3> kNames = {"v1", "v2", "v3"};
    const std::size_t count = mesh_.pointCount() - firstPoint;
    for (std::size_t i = 0; i < 3; ++i) {
      const std::optional<std::size_t> index = integer(attribute(triangle, kNames[i]));
      if (!index || *index >= count) {
        model.xml.fail(triangle, "vertex " + quoted(attribute(triangle, kNames[i])) +
                                     " does not exist (there are " + std::to_string(count) + ")");
      }
      corners[i] = static_cast<std::uint32_t>(firstPoint + *index);
    }
    if (turns) {
      std::swap(corners[1], corners[2]);
    }
    addFace(mesh_, corners);
    requireRoom(model.xml, triangle, mesh_.faceCount());
    tellReached(model, triangle);
    addColour(model, object, triangle);
  }

  /// The colour of a triangle's first corner, or else that of its object.
  void addColour(const ModelPart& model, Node object, Node triangle) {
    const bool isOwn = !attribute(triangle, "p1").empty();
    std::string_view group = attribute(triangle, "pid");
    if (group.empty()) {
      group = attribute(object, "pid");
    }
    const std::optional<std::size_t> index =
        integer(isOwn ? attribute(triangle, "p1") : attribute(object, "pindex"));
    const auto found = model.colours.find(group);
    Colour colour = kDefaultColour;
    if (found != model.colours.end() && index && *index < found->second.size()) {
      colour = found->second[*index];
      hasColours_ = true;
    }
    mesh_.faceColours.insert(mesh_.faceColours.end(), colour.begin(), colour.end());
  }

  static double coordinate(const XmlPart& xml, Node node, std::string_view name) {
    std::string_view text = attribute(node, name);
    if (text.starts_with('+')) {
      text.remove_prefix(1);
    }
    double value = 0;
    const std::from_chars_result result =
        std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size()) {
      xml.fail(node, quoted(text) + " is not a number (" + std::string(name) + ")");
    }
    return value;
  }

  static std::optional<std::size_t> integer(std::string_view text) {
    std::size_t value = 0;
    const std::from_chars_result result =
        std::from_chars(text.data(), text.data() + text.size(), value);
    const bool is = result.ec == std::errc() && result.ptr == text.data() + text.size();
    return is ? std::optional(value) : std::nullopt;
  }

  void tellReached(const ModelPart& model, Node node) {
    if (&model == root_) {
      meter_->reached(static_cast<std::size_t>(std::max<std::ptrdiff_t>(node.offset_debug(), 0)));
    }
  }

  /// A few lines can ask for any number of copies.
  void requireRoom(const XmlPart& xml, Node node, std::size_t count) const {
    if (count > mostElements_) {
      xml.fail(node,
               "the model has more than " + std::to_string(mostElements_) + " points or faces");
    }
  }

  ZipArchive archive_;
  const Progress& progress_;
  std::size_t mostElements_;
  std::map<std::string, std::unique_ptr<ModelPart>> parts_;
  const ModelPart* root_ = nullptr;
  std::optional<ProgressMeter> meter_;  ///< of the bytes of the first part
  Mesh mesh_;
  int placed_ = 0;
  bool hasColours_ = false;
};

}  // namespace

Mesh readThreeMf(std::string_view bytes, const Progress& progress, std::size_t mostElements) {
  return ThreeMfReader(bytes, progress, mostElements).read();
}

}  // namespace zyn
