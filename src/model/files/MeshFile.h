#pragma once

#include <optional>
#include <string_view>

#include "core/Progress.h"
#include "model/Mesh.h"
#include "model/files/ByteWriter.h"
#include "model/files/Obj.h"

namespace zyn {

/// The kinds of files that hold models.
enum class MeshFormat { kBinaryStl, kAsciiStl, kObj, kPly, kOff, kThreeMf };

/// Told by what is in the file, whatever it is called; nothing for what is no model.
std::optional<MeshFormat> formatOf(std::string_view bytes);

/// Reads a model. `sibling` gives the files that it names; it and `progress` may be empty. Throws
/// MeshFileError and Aborted.
Mesh readMesh(std::string_view bytes, const SiblingFile& sibling = {},
              const Progress& progress = {});

/// The format of the files with an extension, ".stl" in any case, that models are written to.
std::optional<MeshFormat> writtenFormat(std::string_view extension);

/// Writes a model, which reads back the same to the last bit of what the format holds; one without
/// anything that could be read back is refused. Throws MeshFileError, Aborted and what the sink
/// throws.
void writeMesh(const Mesh& mesh, MeshFormat format, const ByteSink& sink,
               const Progress& progress = {});

}  // namespace zyn
