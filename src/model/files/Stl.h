#pragma once

#include <string_view>

#include "core/Progress.h"
#include "model/Mesh.h"
#include "model/files/ByteWriter.h"

namespace zyn {

/// Whether the file's size is exactly what its own facet count asks for: then it is a binary STL,
/// whatever it begins with.
bool hasBinaryStlSize(std::string_view bytes);

/// Reads a binary STL: 80 bytes of comment, a 32-bit count, 50 bytes a facet, all little-endian.
/// Equal corners become one point; normals and attributes are passed over, as are bytes behind the
/// last facet. Throws MeshFileError where facets are missing or a coordinate is not finite.
Mesh readBinaryStl(std::string_view bytes, const Progress& progress);

/// Reads the text form of STL, any number of solids. Equal corners become one point. Throws
/// MeshFileError, with the line, for anything that does not belong there, for coordinates that are
/// not finite and for a text that stops early.
Mesh readAsciiStl(std::string_view text, const Progress& progress);

/// Writes a binary STL: coordinates in single precision, polygons as triangles. Throws
/// MeshFileError for coordinates that are not finite there.
void writeStl(const Mesh& mesh, const ByteSink& sink, const Progress& progress);

}  // namespace zyn
