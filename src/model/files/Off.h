#pragma once

#include <string_view>

#include "core/Progress.h"
#include "model/Mesh.h"
#include "model/files/ByteWriter.h"

namespace zyn {

/// Whether it is the first word of an OFF of any kind.
bool isOffKind(std::string_view word);

/// Reads an OFF as text, with normals and colours of points (NOFF, COFF) and colours of faces;
/// texture coordinates are passed over. Colours are 0 to 1 where they have a decimal point, else 0
/// to 255. Throws MeshFileError with the line.
Mesh readOff(std::string_view text, const Progress& progress);

/// Writes points with their normals and colours, faces with their colours. Normals of corners,
/// names and groups are not held.
void writeOff(const Mesh& mesh, const ByteSink& sink, const Progress& progress);

}  // namespace zyn
