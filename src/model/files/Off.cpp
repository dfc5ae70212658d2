#include "model/files/Off.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/ProgressMeter.h"
#include "model/files/FiniteNumbers.h"
#include "model/files/MeshBuilder.h"
#include "model/files/TextScanner.h"

namespace zyn {

namespace {

/// What the first word says of the points that follow.
struct OffKind {
  bool hasTexture = false;
  bool hasColours = false;
  bool hasNormals = false;
  bool isFlat = true;  ///< three coordinates a point
};

std::optional<OffKind> kindOf(std::string_view word) {
  const auto take = [&word](std::string_view prefix) {
    const bool is = word.starts_with(prefix);
    word.remove_prefix(is ? prefix.size() : 0);
    return is;
  };
  OffKind kind;
  kind.hasTexture = take("ST");
  kind.hasColours = take("C");
  kind.hasNormals = take("N");
  kind.isFlat = !take("4") && !take("n");
  return word == "OFF" ? std::optional(kind) : std::nullopt;
}

using Colour = std::array<float, 4>;

class OffReader {
 public:
  OffReader(std::string_view text, const Progress& progress)
      : text_(text), scanner_(text, false), meter_(progress, text.size()) {}

  Mesh read() {
    const OffKind kind = readKind();
    const std::size_t pointCount = readCount("points");
    const std::size_t faceCount = readCount("faces");
    if (!word().empty()) {  // the count of edges, which nobody needs
      scanner_.skipRestOfLine();
    }
    for (std::size_t i = 0; i < pointCount; ++i) {
      readPoint(kind);
      meter_.reached(scanner_.offset());
    }
    for (std::size_t i = 0; i < faceCount; ++i) {
      readFace();
      meter_.reached(scanner_.offset());
    }
    finish();
    return std::move(mesh_);
  }

 private:
  /// The next word of the line that is not in a comment.
  std::string_view word() {
    const std::string_view found = scanner_.word();
    if (!found.starts_with('#')) {
      return found;
    }
    scanner_.skipRestOfLine();
    return {};
  }

  std::string_view wordOnAnyLine(const char* what) {
    std::string_view found = scanner_.wordOnAnyLine();
    while (found.starts_with('#')) {
      scanner_.skipRestOfLine();
      found = scanner_.wordOnAnyLine();
    }
    if (found.empty()) {
      scanner_.fail("the file ends where " + std::string(what) + " should follow");
    }
    return found;
  }

  OffKind readKind() {
    const std::string_view name = wordOnAnyLine("OFF");
    const std::optional<OffKind> kind = kindOf(name);
    if (!kind) {
      scanner_.fail(quoted(name) + " where \"OFF\" should follow");
    }
    if (!kind->isFlat) {
      scanner_.fail("points of other than three coordinates are not read");
    }
    TextScanner ahead = scanner_;
    if (ahead.word() == "BINARY") {
      scanner_.fail("a binary OFF is not read");
    }
    return *kind;
  }

  /// A count of what takes two bytes each at least.
  std::size_t readCount(const char* what) {
    const long long count = scanner_.integerOf(wordOnAnyLine(what), what);
    const auto most = static_cast<long long>(
        std::min((text_.size() - scanner_.offset()) / 2 + 1, kMostMeshElements));
    if (count < 0 || count > most) {
      scanner_.fail("the file is too short for " + std::to_string(count) + ' ' + what);
    }
    return static_cast<std::size_t>(count);
  }

  double coordinate(const char* what) {
    const double value = scanner_.numberOf(wordOnAnyLine(what), what);
    if (!std::isfinite(value)) {
      scanner_.fail("a coordinate is not finite (" + std::string(what) + ")");
    }
    return value;
  }

  void readPoint(const OffKind& kind) {
    for (int i = 0; i < 3; ++i) {
      mesh_.points.push_back(coordinate("a point"));
    }
    for (int i = 0; kind.hasNormals && i < 3; ++i) {
      mesh_.normals.push_back(scanner_.numberOf(wordOnAnyLine("a normal"), "normal"));
    }
    if (kind.hasColours) {
      const Colour colour = readColour().value_or(kDefaultColour);
      mesh_.pointColours.insert(mesh_.pointColours.end(), colour.begin(), colour.end());
    }
    scanner_.skipRestOfLine();
  }

  void readFace() {
    const long long count = scanner_.integerOf(wordOnAnyLine("a face"), "corners");
    if (count < 3) {
      scanner_.fail("a face needs at least 3 corners, not " + std::to_string(count));
    }
    corners_.clear();
    for (long long i = 0; i < count; ++i) {
      const long long point = scanner_.integerOf(wordOnAnyLine("a corner"), "point");
      if (point < 0 || point >= static_cast<long long>(mesh_.pointCount())) {
        scanner_.fail("point " + std::to_string(point) + " does not exist (there are " +
                      std::to_string(mesh_.pointCount()) + ")");
      }
      corners_.push_back(static_cast<std::uint32_t>(point));
    }
    addFace(mesh_, corners_);
    const std::optional<Colour> colour = readColour();
    hasFaceColours_ |= colour.has_value();
    faceColours_.push_back(colour.value_or(kDefaultColour));
    scanner_.skipRestOfLine();
  }

  /// The three or four numbers that are left on the line; one is a place in a table of colours that
  /// the file does not hold.
  std::optional<Colour> readColour() {
    Colour colour{0, 0, 0, 1};
    std::array<std::string_view, 4> words;
    std::size_t count = 0;
    while (count < words.size() && !(words[count] = word()).empty()) {
      ++count;
    }
    if (count < 3) {
      return std::nullopt;
    }
    const bool isBytes = std::all_of(words.begin(), words.end(), [](std::string_view word) {
      return word.find_first_not_of("0123456789") == word.npos;
    });
    for (std::size_t i = 0; i < count; ++i) {
      const float value = scanner_.singleOf(words[i], "colour") / (isBytes ? 255.0f : 1.0f);
      colour[i] = value >= 0 ? std::min(value, 1.0f) : 0.0f;
    }
    return colour;
  }

  void finish() {
    dropUnlessFinite(mesh_.normals);
    if (hasFaceColours_) {
      mesh_.faceColours.reserve(4 * faceColours_.size());
      for (const Colour& colour : faceColours_) {
        mesh_.faceColours.insert(mesh_.faceColours.end(), colour.begin(), colour.end());
      }
    }
  }

  std::string_view text_;
  TextScanner scanner_;
  ProgressMeter meter_;
  Mesh mesh_;
  std::vector<std::uint32_t> corners_;  ///< of the face that is being read
  std::vector<Colour> faceColours_;
  bool hasFaceColours_ = false;
};

class OffWriter {
 public:
  OffWriter(const Mesh& mesh, const ByteSink& sink, const Progress& progress)
      : mesh_(mesh),
        out_(sink),
        meter_(progress, mesh.pointCount() + mesh.faceCount()),
        hasNormals_(!mesh.normals.empty() && mesh.normals.size() == mesh.points.size()) {}

  void write() {
    out_.text(mesh_.pointColours.empty() ? "" : "C");
    out_.text(hasNormals_ ? "NOFF\n" : "OFF\n");
    out_.number(mesh_.pointCount());
    out_.text(" ");
    out_.number(mesh_.faceCount());
    out_.text(" 0\n");
    for (std::size_t point = 0; point < mesh_.pointCount(); ++point) {
      writeVector(mesh_.points, point);
      if (hasNormals_) {
        out_.text(" ");
        writeVector(mesh_.normals, point);
      }
      writeColour(mesh_.pointColours, point);
      out_.text("\n");
      meter_.reached(point);
    }
    for (std::size_t face = 0; face < mesh_.faceCount(); ++face) {
      writeFace(face);
      meter_.reached(mesh_.pointCount() + face);
    }
    out_.finish();
  }

 private:
  void writeVector(const std::vector<double>& vectors, std::size_t index) {
    for (std::size_t i = 0; i < 3; ++i) {
      out_.text(i > 0 ? " " : "");
      out_.number(vectors[3 * index + i]);
    }
  }

  void writeFace(std::size_t face) {
    out_.number(mesh_.faceEnd(face) - mesh_.faceBegin(face));
    for (std::size_t corner = mesh_.faceBegin(face); corner < mesh_.faceEnd(face); ++corner) {
      out_.text(" ");
      out_.number(mesh_.corners[corner]);
    }
    writeColour(mesh_.faceColours, face);
    out_.text("\n");
  }

  /// Always with a decimal point, which tells 1 of 1 from 1 of 255.
  void writeColour(const std::vector<float>& colours, std::size_t index) {
    for (std::size_t i = 4 * index; !colours.empty() && i < 4 * index + 4; ++i) {
      out_.text(" ");
      out_.number(colours[i]);
      out_.text(colours[i] == std::floor(colours[i]) ? ".0" : "");
    }
  }

  const Mesh& mesh_;
  ByteWriter out_;
  ProgressMeter meter_;
  bool hasNormals_;
};

}  // namespace

bool isOffKind(std::string_view word) { return kindOf(word).has_value(); }

Mesh readOff(std::string_view text, const Progress& progress) {
  return OffReader(text, progress).read();
}

void writeOff(const Mesh& mesh, const ByteSink& sink, const Progress& progress) {
  requireFinite(mesh);
  OffWriter(mesh, sink, progress).write();
}

}  // namespace zyn
