#pragma once

#include <string>

#include "core/Progress.h"
#include "model/Mesh.h"

namespace zyn {

/// Reads a model from a file, with the materials beside it. What fails is thrown as `Failure`, with
/// the file's name: the code is the system's own, or ERROR_INVALID_DATA for what is in the file.
/// Throws Aborted as well.
Mesh loadMesh(const std::wstring& file, const Progress& progress);

/// Writes a model in the format of the file's extension, beside the file, which takes its name when
/// it is whole. What fails is thrown as `Failure`; an extension that is none of them, or a mesh
/// that the format does not hold, is E_INVALIDARG. Throws Aborted as well.
void saveMesh(const Mesh& mesh, const std::wstring& file, const Progress& progress);

}  // namespace zyn
