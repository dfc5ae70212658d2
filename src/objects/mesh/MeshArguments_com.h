#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "model/Mesh.h"
#include "objects/mesh/MeshLook.h"

namespace zyn {

// The arguments of a mesh's members. All throw badArgument for what they refuse. Reading an array
// may run code of a script, which may change the mesh: counts of points and faces are those after
// it.

/// x, y, z of each.
std::vector<double> readPoints(const VARIANT& XYZ);

/// Where the faces of a mesh of `corners` corners end; none for triangles only.
std::vector<std::uint32_t> readFaceEnds(const VARIANT& Comptes, std::size_t corners);

/// One a point, one a corner, or none.
std::vector<double> readNormals(const VARIANT& XYZ, const Mesh& mesh);

/// Red, green, blue and alpha for each point, or none.
std::vector<float> readPointColours(const VARIANT& RGBA, const Mesh& mesh);
/// The same for each face.
std::vector<float> readFaceColours(const VARIANT& RGBA, const Mesh& mesh);

/// A name that is not empty.
std::wstring readFileName(BSTR Fichier);

MeshLook::Colour readColour(double r, double g, double b, double alpha);

/// One a point, or none.
std::vector<double> readValues(const VARIANT& Valeurs, const Mesh& mesh);

/// One a face, or none.
std::vector<std::int32_t> readNames(const VARIANT& Noms, const Mesh& mesh);

/// The name of a face's group; empty where there is none.
std::wstring groupName(const Mesh& mesh, std::size_t face);

}  // namespace zyn
