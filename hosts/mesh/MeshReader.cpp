#include "mesh/MeshReader.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>

#include "common/InputFile.h"
#include "common/Words.h"
#include "mesh/AsciiStlReader.h"
#include "mesh/BinaryStlReader.h"
#include "mesh/MeshError.h"
#include "mesh/ObjReader.h"
#include "mesh/TextScanner.h"

namespace zyn::mesh {

using host::equalsIgnoringCase;
using host::isUtf16;
using host::withoutUtf8Mark;

namespace {

bool looksLikeText(std::string_view bytes) {
  constexpr std::size_t kSample = 4096;
  return std::none_of(bytes.begin(),
                      bytes.begin() + static_cast<std::ptrdiff_t>(std::min(bytes.size(), kSample)),
                      [](char c) { return c >= 0 && c < ' ' && (c < '\t' || c > '\r'); });
}

bool isObjKeyword(std::string_view word) {
  constexpr std::array<std::string_view, 14> kKeywords = {
      "v", "vn", "vt", "vp", "f", "l", "p", "o", "g", "s", "mg", "mtllib", "usemtl", "usemap"};
  return std::find(kKeywords.begin(), kKeywords.end(), word) != kKeywords.end();
}

/// The first word of the text that is not in a comment.
std::string_view firstWord(std::string_view text) {
  TextScanner scanner(text);
  while (scanner.nextLine()) {
    const std::string_view word = scanner.word();
    if (word.starts_with('#')) {
      scanner.skipRestOfLine();
    } else if (!word.empty()) {
      return word;
    }
  }
  return {};
}

Mesh parseAny(std::string_view bytes, const Progress& progress) {
  switch (detectFormat(bytes)) {
    case Format::kBinaryStl:
      return readBinaryStl(bytes, progress);
    case Format::kAsciiStl:
      return readAsciiStl(withoutUtf8Mark(bytes), progress);
    case Format::kObj:
      return readObj(withoutUtf8Mark(bytes), progress);
    case Format::kUnknown:
      break;
  }
  if (bytes.empty()) {
    throw MeshError("the file is empty");
  }
  throw MeshError(isUtf16(bytes) ? "the text is UTF-16; save it as UTF-8"
                                 : "not a model in STL or OBJ format");
}

}  // namespace

Format detectFormat(std::string_view bytes) {
  // A binary STL may begin with "solid" too: only its size tells.
  if (hasBinaryStlSize(bytes)) {
    return Format::kBinaryStl;
  }
  if (isUtf16(bytes)) {
    return Format::kUnknown;
  }
  if (!looksLikeText(bytes)) {
    return Format::kBinaryStl;
  }
  const std::string_view word = firstWord(withoutUtf8Mark(bytes));
  if (equalsIgnoringCase(word, "solid")) {
    return Format::kAsciiStl;
  }
  return isObjKeyword(word) ? Format::kObj : Format::kUnknown;
}

Mesh parseMesh(std::string_view bytes, const Progress& progress) {
  Mesh mesh = parseAny(bytes, progress);
  if (mesh.triangles.empty()) {
    throw MeshError("there are no triangles in it");
  }
  return mesh;
}

Mesh readMesh(const std::filesystem::path& file, const Progress& progress) {
  try {
    return parseMesh(host::readInputFile(file, "a model"), progress);
  } catch (const std::runtime_error& error) {
    throw MeshError(host::utf8Name(file) + ": " + error.what());
  }
}

}  // namespace zyn::mesh
