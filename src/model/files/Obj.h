#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/Progress.h"
#include "model/Mesh.h"
#include "model/files/ByteWriter.h"

namespace zyn {

/// Gives the bytes of a file that another one names, relative to its own folder; nothing where it
/// cannot be read. The name comes from the file, in UTF-8 as a rule: it is a file's name or a path
/// below the folder, whatever the file says.
using SiblingFile = std::function<std::optional<std::string>(std::string_view name)>;

/// Reads the points and faces of a Wavefront OBJ: v (with colours behind the coordinates), vn, f
/// (polygons, indices counted from the end, the forms v, v/vt, v//vn, v/vt/vn), groups and objects,
/// and the diffuse colours of its materials. Groups are counted from 0 in the order of their first
/// faces; where there are any, and not objects only, a face's name is the number of its group.
/// Normals count where every corner has one. Everything else in the file is passed over, as are
/// materials that are missing. Throws MeshFileError, with the line, for malformed v, vn and f
/// lines.
Mesh readObj(std::string_view text, const SiblingFile& sibling, const Progress& progress);

/// Writes points with their colours (no alpha), normals, faces and groups.
void writeObj(const Mesh& mesh, const ByteSink& sink, const Progress& progress);

}  // namespace zyn
