#include "mesh/MeshReader.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <string>
#include <system_error>

#include "mesh/AsciiStlReader.h"
#include "mesh/BinaryStlReader.h"
#include "mesh/MeshError.h"
#include "mesh/ObjReader.h"
#include "mesh/TextScanner.h"

namespace zyn::mesh {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

bool looksLikeText(std::string_view bytes) {
  constexpr std::size_t kSample = 4096;
  return std::none_of(bytes.begin(),
                      bytes.begin() + static_cast<std::ptrdiff_t>(std::min(bytes.size(), kSample)),
                      [](char c) { return c >= 0 && c < ' ' && (c < '\t' || c > '\r'); });
}

bool isUtf16(std::string_view bytes) {
  return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
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

std::string_view withoutMark(std::string_view bytes) {
  return bytes.starts_with(kUtf8Mark) ? bytes.substr(kUtf8Mark.size()) : bytes;
}

Mesh parseAny(std::string_view bytes, const Progress& progress) {
  switch (detectFormat(bytes)) {
    case Format::kBinaryStl:
      return readBinaryStl(bytes, progress);
    case Format::kAsciiStl:
      return readAsciiStl(withoutMark(bytes), progress);
    case Format::kObj:
      return readObj(withoutMark(bytes), progress);
    case Format::kUnknown:
      break;
  }
  if (bytes.empty()) {
    throw MeshError("the file is empty");
  }
  throw MeshError(isUtf16(bytes) ? "the text is UTF-16; save it as UTF-8"
                                 : "not a model in STL or OBJ format");
}

std::string utf8(const std::filesystem::path& file) {
  const std::u8string name = file.u8string();
  return {name.begin(), name.end()};
}

std::string readWhole(const std::filesystem::path& file) {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(file, error);
  if (status.type() == std::filesystem::file_type::not_found) {
    throw MeshError("no such file");
  }
  if (status.type() == std::filesystem::file_type::directory) {
    throw MeshError("this is a folder, not a model");
  }
  const std::uintmax_t size = std::filesystem::file_size(file, error);
  std::ifstream stream(file, std::ios::binary);
  if (error || !stream) {
    throw MeshError("cannot be opened");
  }
  std::string bytes(static_cast<std::size_t>(size), '\0');
  stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (stream.gcount() != static_cast<std::streamsize>(bytes.size())) {
    throw MeshError("cannot be read to its end");
  }
  return bytes;
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
  const std::string_view word = firstWord(withoutMark(bytes));
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
    return parseMesh(readWhole(file), progress);
  } catch (const MeshError& error) {
    throw MeshError(utf8(file) + ": " + error.what());
  }
}

}  // namespace zyn::mesh
