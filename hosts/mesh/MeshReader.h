#pragma once

#include <filesystem>
#include <string_view>

#include "mesh/Mesh.h"
#include "mesh/Progress.h"

namespace zyn::mesh {

/// The formats told apart by what is in the file, whatever it is called.
enum class Format { kBinaryStl, kAsciiStl, kObj, kUnknown };

Format detectFormat(std::string_view bytes);

/// Reads a model held in memory. Throws MeshError: "position: what", or "what" alone.
Mesh parseMesh(std::string_view bytes, const Progress& progress = {});

/// Reads a model file. Throws MeshError: "file: position: what". `progress` may be empty.
Mesh readMesh(const std::filesystem::path& file, const Progress& progress = {});

}  // namespace zyn::mesh
