#include "model/files/MeshFile.h"

#include <algorithm>
#include <array>

#include "model/files/MeshFileError.h"
#include "model/files/Off.h"
#include "model/files/Ply.h"
#include "model/files/Stl.h"
#include "model/files/TextScanner.h"
#include "model/files/ThreeMf.h"
#include "model/files/ZipArchive.h"

namespace zyn {

namespace {

std::string_view withoutUtf8Mark(std::string_view bytes) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  return bytes.starts_with(kMark) ? bytes.substr(kMark.size()) : bytes;
}

bool isUtf16(std::string_view bytes) {
  return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
}

bool looksLikeText(std::string_view bytes) {
  constexpr std::size_t kSample = 4096;
  const std::string_view sample = bytes.substr(0, kSample);
  return std::none_of(sample.begin(), sample.end(),
                      [](char c) { return c >= 0 && c < ' ' && (c < '\t' || c > '\r'); });
}

bool isObjKeyword(std::string_view word) {
  constexpr std::array<std::string_view, 14> kKeywords = {
      "v", "vn", "vt", "vp", "f", "l", "p", "o", "g", "s", "mg", "mtllib", "usemtl", "usemap"};
  return std::find(kKeywords.begin(), kKeywords.end(), word) != kKeywords.end();
}

/// The first word of the text that is not in a comment.
std::string_view firstWord(std::string_view text) {
  TextScanner scanner(text, false);
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

Mesh readAs(MeshFormat format, std::string_view bytes, const SiblingFile& sibling,
            const Progress& progress) {
  switch (format) {
    case MeshFormat::kBinaryStl:
      return readBinaryStl(bytes, progress);
    case MeshFormat::kAsciiStl:
      return readAsciiStl(withoutUtf8Mark(bytes), progress);
    case MeshFormat::kObj:
      return readObj(withoutUtf8Mark(bytes), sibling, progress);
    case MeshFormat::kPly:
      return readPly(bytes, progress);
    case MeshFormat::kOff:
      return readOff(withoutUtf8Mark(bytes), progress);
    case MeshFormat::kThreeMf:
      break;
  }
  return readThreeMf(bytes, progress);
}

}  // namespace

std::optional<MeshFormat> formatOf(std::string_view bytes) {
  // A binary STL may begin with anything: only its size tells.
  if (hasBinaryStlSize(bytes)) {
    return MeshFormat::kBinaryStl;
  }
  if (isPly(bytes)) {
    return MeshFormat::kPly;
  }
  if (isZip(bytes)) {
    return MeshFormat::kThreeMf;
  }
  if (bytes.empty() || isUtf16(bytes)) {
    return std::nullopt;
  }
  if (!looksLikeText(bytes)) {
    return MeshFormat::kBinaryStl;
  }
  const std::string_view word = firstWord(withoutUtf8Mark(bytes));
  if (isOffKind(word)) {
    return MeshFormat::kOff;
  }
  if (equalsIgnoringCase(word, "solid")) {
    return MeshFormat::kAsciiStl;
  }
  return isObjKeyword(word) ? std::optional(MeshFormat::kObj) : std::nullopt;
}

Mesh readMesh(std::string_view bytes, const SiblingFile& sibling, const Progress& progress) {
  const std::optional<MeshFormat> format = formatOf(bytes);
  if (!format) {
    throw MeshFileError(bytes.empty()    ? "the file is empty"
                        : isUtf16(bytes) ? "the text is UTF-16; save it as UTF-8"
                                         : "not a model in STL, OBJ, PLY, OFF or 3MF format");
  }
  Mesh mesh = readAs(*format, bytes, sibling, progress);
  if (mesh.points.empty()) {
    throw MeshFileError("there are no points in it");
  }
  return mesh;
}

std::optional<MeshFormat> writtenFormat(std::string_view extension) {
  constexpr std::array<std::pair<std::string_view, MeshFormat>, 4> kExtensions = {
      {{".stl", MeshFormat::kBinaryStl},
       {".ply", MeshFormat::kPly},
       {".obj", MeshFormat::kObj},
       {".off", MeshFormat::kOff}}};
  for (const auto& [name, format] : kExtensions) {
    if (equalsIgnoringCase(extension, name)) {
      return format;
    }
  }
  return std::nullopt;
}

void writeMesh(const Mesh& mesh, MeshFormat format, const ByteSink& sink,
               const Progress& progress) {
  if (mesh.points.empty()) {
    throw MeshFileError("there are no points to write");
  }
  switch (format) {
    case MeshFormat::kBinaryStl:
      return writeStl(mesh, sink, progress);
    case MeshFormat::kObj:
      return writeObj(mesh, sink, progress);
    case MeshFormat::kPly:
      return writePly(mesh, sink, progress);
    default:
      return writeOff(mesh, sink, progress);
  }
}

}  // namespace zyn
