#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <string>

#include "core/ProgressMeter.h"
#include "model/files/ByteOrder.h"
#include "model/files/MeshBuilder.h"
#include "model/files/PointWelder.h"
#include "model/files/Stl.h"
#include "model/files/TextScanner.h"

namespace zyn {

namespace {

constexpr std::size_t kHeaderSize = 84;
constexpr std::size_t kNormalSize = 12;
constexpr std::size_t kFacetSize = 50;

std::uint32_t facetCount(std::string_view bytes) {
  return loadNumber<std::uint32_t, std::endian::little>(bytes.data() + 80);
}

std::uint64_t neededSize(std::uint64_t count) { return kHeaderSize + kFacetSize * count; }

/// About how many points so many facets have: in a closed surface two meet in each, nearly.
std::size_t pointsOf(std::size_t facets) { return facets / 2 + 2; }

PointWelder::Point vertex(std::string_view bytes, std::size_t at) {
  PointWelder::Point point{};
  for (double& coordinate : point) {
    coordinate = loadNumber<float, std::endian::little>(bytes.data() + at);
    if (!std::isfinite(coordinate)) {
      failAtByte(at, "a coordinate is not finite");
    }
    at += sizeof(float);
  }
  return point;
}

void expect(TextScanner& scanner, std::string_view keyword) {
  const std::string_view found = scanner.wordOnAnyLine();
  if (equalsIgnoringCase(found, keyword)) {
    return;
  }
  if (found.empty()) {
    scanner.fail("the file ends where \"" + std::string(keyword) + "\" should follow");
  }
  scanner.fail(quoted(found) + " where \"" + std::string(keyword) + "\" should follow");
}

/// Reads from behind "facet" to "endfacet".
void readFacet(TextScanner& scanner, PointWelder& welder, Mesh& mesh) {
  expect(scanner, "normal");
  for (int i = 0; i < 3; ++i) {
    scanner.number("normal");
  }
  expect(scanner, "outer");
  expect(scanner, "loop");
  std::array<std::uint32_t, 3> corners{};
  for (std::uint32_t& corner : corners) {
    expect(scanner, "vertex");
    corner = welder.number(scanner.position("vertex"));
  }
  expect(scanner, "endloop");
  expect(scanner, "endfacet");
  addFace(mesh, corners);
}

}  // namespace

bool hasBinaryStlSize(std::string_view bytes) {
  return bytes.size() >= kHeaderSize && bytes.size() == neededSize(facetCount(bytes));
}

Mesh readBinaryStl(std::string_view bytes, const Progress& progress) {
  const std::string has = std::to_string(bytes.size());
  if (bytes.size() < kHeaderSize) {
    throw MeshFileError("not a whole binary STL: " + has + " bytes, less than its header");
  }
  const std::uint32_t count = facetCount(bytes);
  if (bytes.size() < neededSize(count)) {
    failAtByte(80, "not a whole binary STL: " + std::to_string(count) + " facets need " +
                       std::to_string(neededSize(count)) + " bytes, but it has " + has);
  }
  if (count > kMostMeshElements / 3) {
    failAtByte(80, "the model has too many facets");
  }
  Mesh mesh;
  mesh.corners.resize(std::size_t{3} * count);
  PointWelder welder(mesh.points, pointsOf(count));
  ProgressMeter meter(progress, count);
  constexpr std::size_t kFacets = PointWelder::kBatch / 3;
  std::array<PointWelder::Point, PointWelder::kBatch> vertices;
  for (std::size_t first = 0; first < count; first += kFacets) {
    const std::size_t facets = std::min(kFacets, count - first);
    for (std::size_t i = 0; i < 3 * facets; ++i) {
      vertices[i] =
          vertex(bytes, kHeaderSize + kFacetSize * (first + i / 3) + kNormalSize + 12 * (i % 3));
    }
    welder.number({vertices.data(), 3 * facets}, &mesh.corners[3 * first]);
    meter.reached(first);
  }
  return mesh;
}

Mesh readAsciiStl(std::string_view text, const Progress& progress) {
  constexpr std::size_t kBytesOfAFacet = 200;
  TextScanner scanner(text, false);
  ProgressMeter meter(progress, text.size());
  Mesh mesh;
  PointWelder welder(mesh.points, pointsOf(text.size() / kBytesOfAFacet));
  expect(scanner, "solid");
  for (bool more = true; more;) {
    scanner.skipRestOfLine();
    std::string_view word = scanner.wordOnAnyLine();
    while (equalsIgnoringCase(word, "facet")) {
      readFacet(scanner, welder, mesh);
      meter.reached(scanner.offset());
      word = scanner.wordOnAnyLine();
    }
    if (word.empty()) {
      scanner.fail("the file ends inside a solid");
    }
    if (!equalsIgnoringCase(word, "endsolid")) {
      scanner.fail(quoted(word) + " where \"facet\" or \"endsolid\" should follow");
    }
    scanner.skipRestOfLine();
    word = scanner.wordOnAnyLine();
    more = equalsIgnoringCase(word, "solid");
    if (!more && !word.empty()) {
      scanner.fail(quoted(word) + " where \"solid\" should follow");
    }
  }
  return mesh;
}

}  // namespace zyn
