#pragma once

#include <array>
#include <cstring>
#include <string>
#include <vector>

#include "model/files/MeshFile.h"
#include "model/files/MeshFileError.h"

namespace zyn {

/// The bytes of a number, the least significant first or last.
template <typename Number>
std::string bytesOf(Number value, bool isBig = false) {
  char bytes[sizeof(Number)];
  std::memcpy(bytes, &value, sizeof(Number));
  const std::string text(bytes, sizeof(Number));
  return isBig ? std::string(text.rbegin(), text.rend()) : text;
}

using FacetNumbers = std::array<float, 12>;

/// The bytes of a binary STL with a facet for each twelve floats (normal, three vertices).
inline std::string stlOf(const std::vector<FacetNumbers>& facets,
                         const std::string& comment = "made by a test") {
  std::string bytes = comment;
  bytes.resize(80, '\0');
  bytes += bytesOf(static_cast<std::uint32_t>(facets.size()));
  for (const FacetNumbers& facet : facets) {
    for (const float number : facet) {
      bytes += bytesOf(number);
    }
    bytes += std::string(2, '\0');
  }
  return bytes;
}

/// The message with which a model is refused, empty when it is accepted.
inline std::string refusalOf(std::string_view bytes) {
  try {
    readMesh(bytes);
  } catch (const MeshFileError& error) {
    return error.what();
  }
  return {};
}

inline std::string written(const Mesh& mesh, MeshFormat format) {
  std::string bytes;
  writeMesh(mesh, format, [&](std::string_view part) { bytes += part; });
  return bytes;
}

using Numbers = std::vector<double>;
using Indices = std::vector<std::uint32_t>;
using Colours = std::vector<float>;

}  // namespace zyn
