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

// The arguments of a mesh's members. All throw badArgument for what they refuse.

/// x, y, z of each.
std::vector<double> readPoints(const VARIANT& XYZ);

/// Where the faces of a mesh of `corners` corners end; none for triangles only.
std::vector<std::uint32_t> readFaceEnds(const VARIANT& Comptes, std::size_t corners);

/// One a point, one a corner, or none.
std::vector<double> readNormals(const VARIANT& XYZ, const Mesh& mesh);

/// Red, green, blue and alpha for each of `count` `things`, or none.
std::vector<float> readColours(const VARIANT& RGBA, std::size_t count, const wchar_t* things);

/// A name that is not empty.
std::wstring readFileName(BSTR Fichier);

MeshLook::Colour readColour(double r, double g, double b, double alpha);

/// One a point, or none.
std::vector<double> readValues(const VARIANT& Valeurs, std::size_t points);

/// One a face, or none.
std::vector<std::int32_t> readNames(const VARIANT& Noms, std::size_t faces);

/// The name of a face's group; empty where there is none.
std::wstring groupName(const Mesh& mesh, std::size_t face);

}  // namespace zyn
