#pragma once

#include <string>

#include "core/Progress.h"
#include "model/Mesh.h"

namespace zyn {

/// Reads a model, whatever its file is called. What the system refuses is thrown as `Failure` with
/// its code, what is wrong within the file with ERROR_INVALID_DATA; both name the file.
Mesh loadMesh(const std::wstring& file, const Progress& progress);

/// Whether models can be written to files of that name, by its extension.
bool canSaveMesh(const std::wstring& file);

/// Writes a model beside a file, which it then replaces.
void saveMesh(const Mesh& mesh, const std::wstring& file, const Progress& progress);

}  // namespace zyn
