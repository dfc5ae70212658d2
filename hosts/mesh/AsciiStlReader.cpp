#include "mesh/AsciiStlReader.h"

#include <algorithm>
#include <string>

#include "common/Words.h"
#include "mesh/TextScanner.h"

namespace zyn::mesh {

using host::equalsIgnoringCase;
using host::quoted;

namespace {

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
Triangle readFacet(TextScanner& scanner) {
  Triangle triangle;
  expect(scanner, "normal");
  const Vector given = scanner.direction("normal");
  expect(scanner, "outer");
  expect(scanner, "loop");
  for (Vector& vertex : triangle.vertices) {
    expect(scanner, "vertex");
    vertex = scanner.position("vertex");
  }
  expect(scanner, "endloop");
  expect(scanner, "endfacet");
  const auto& [a, b, c] = triangle.vertices;
  std::fill_n(triangle.normals, 3, chosenNormal(given, facetNormal(a, b, c)));
  return triangle;
}

}  // namespace

Mesh readAsciiStl(std::string_view text, const Progress& progress) {
  TextScanner scanner(text);
  ProgressMeter meter(progress, text.size());
  Mesh mesh;
  expect(scanner, "solid");
  for (bool more = true; more;) {
    scanner.skipRestOfLine();
    std::string_view word = scanner.wordOnAnyLine();
    while (equalsIgnoringCase(word, "facet")) {
      mesh.triangles.push_back(readFacet(scanner));
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

}  // namespace zyn::mesh
