#include "objects/mesh/MeshArguments_com.h"

#include "com/NumberArray_com.h"
#include "com/arguments_com.h"
#include "core/Utf8.h"

namespace zyn {

namespace {

std::wstring element(std::size_t index) { return L"element " + std::to_wstring(index); }

/// "12 numbers, there are 4 points"
std::wstring mismatch(std::size_t numbers, const wchar_t* what, std::size_t count,
                      const wchar_t* things) {
  return std::to_wstring(numbers) + L" " + what + L", there are " + std::to_wstring(count) + L" " +
         things;
}

/// For each of `count` `things`.
std::vector<float> coloursIn(const NumberArray& rgba, std::size_t count, const wchar_t* things) {
  if (rgba.isEmpty()) {
    return {};
  }
  const std::size_t width = rgba.count() == 3 * count ? 3 : 4;
  if (rgba.count() != width * count) {
    throw badArgument(L"RGBA",
                      mismatch(rgba.count(), L"numbers", count, things) + L" with 3 or 4 each");
  }
  rgba.rows(width);
  const double full = rgba.holdsBytes() ? 255 : 1;
  const std::vector<double> numbers = rgba.doubles();
  std::vector<float> colours;
  colours.reserve(4 * count);
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (!(numbers[i] >= 0 && numbers[i] <= full)) {
      throw badArgument(L"RGBA",
                        element(i) + L" is " + textOf(numbers[i]) + L", colours are from 0 to 1");
    }
    colours.push_back(static_cast<float>(numbers[i] / full));
    if (width == 3 && i % 3 == 2) {
      colours.push_back(1);
    }
  }
  return colours;
}

}  // namespace

std::vector<double> readPoints(const VARIANT& XYZ) {
  const NumberArray xyz(L"XYZ", XYZ);
  xyz.requireGiven();
  xyz.rows(3);
  return xyz.finiteDoubles();
}

std::vector<std::uint32_t> readFaceEnds(const VARIANT& Comptes, std::size_t corners) {
  const NumberArray argument(L"Comptes", Comptes);
  argument.requireGiven();
  const std::vector<std::int32_t> counts = argument.integers();
  std::vector<std::uint32_t> ends;
  ends.reserve(counts.size());
  std::size_t end = 0;
  bool areTriangles = true;
  for (const std::int32_t count : counts) {
    if (count < 3) {
      throw badArgument(L"Comptes", element(ends.size()) + L" is " + std::to_wstring(count) +
                                        L", a face has 3 corners or more");
    }
    areTriangles = areTriangles && count == 3;
    end += static_cast<std::size_t>(count);
    if (end > corners) {
      break;
    }
    ends.push_back(static_cast<std::uint32_t>(end));
  }
  if (end != corners) {
    throw badArgument(L"Comptes", L"these are not the " + std::to_wstring(corners) +
                                      L" corners that Indices has");
  }
  if (areTriangles) {
    ends.clear();
  }
  return ends;
}

std::vector<double> readNormals(const VARIANT& XYZ, const Mesh& mesh) {
  const NumberArray xyz(L"XYZ", XYZ);
  const std::size_t count = xyz.rows(3);
  if (count != 0 && count != mesh.pointCount() && count != mesh.corners.size()) {
    throw badArgument(L"XYZ", mismatch(count, L"normals", mesh.pointCount(), L"points and ") +
                                  std::to_wstring(mesh.corners.size()) + L" corners");
  }
  return xyz.finiteDoubles();
}

std::vector<float> readPointColours(const VARIANT& RGBA, const Mesh& mesh) {
  const NumberArray rgba(L"RGBA", RGBA);
  return coloursIn(rgba, mesh.pointCount(), L"points");
}

std::vector<float> readFaceColours(const VARIANT& RGBA, const Mesh& mesh) {
  const NumberArray rgba(L"RGBA", RGBA);
  return coloursIn(rgba, mesh.faceCount(), L"faces");
}

std::wstring readFileName(BSTR Fichier) {
  std::wstring name = fileName(L"Fichier", Fichier);
  if (name.empty()) {
    throw badArgument(L"Fichier", L"the name of a file is wanted");
  }
  return name;
}

MeshLook::Colour readColour(double r, double g, double b, double alpha) {
  return {inRange(L"r", r, 0, 1), inRange(L"g", g, 0, 1), inRange(L"b", b, 0, 1),
          inRange(L"alpha", alpha, 0, 1)};
}

std::vector<double> readValues(const VARIANT& Valeurs, const Mesh& mesh) {
  const NumberArray values(L"Valeurs", Valeurs);
  if (!values.isEmpty() && values.count() != mesh.pointCount()) {
    throw badArgument(L"Valeurs",
                      mismatch(values.count(), L"values", mesh.pointCount(), L"points"));
  }
  return values.doubles();
}

std::vector<std::int32_t> readNames(const VARIANT& Noms, const Mesh& mesh) {
  const NumberArray names(L"Noms", Noms);
  if (!names.isEmpty() && names.count() != mesh.faceCount()) {
    throw badArgument(L"Noms", mismatch(names.count(), L"names", mesh.faceCount(), L"faces"));
  }
  return names.integers();
}

std::wstring groupName(const Mesh& mesh, std::size_t face) {
  const std::int32_t group = mesh.faceGroups.empty() ? -1 : mesh.faceGroups[face];
  if (group < 0 || static_cast<std::size_t>(group) >= mesh.groups.size()) {
    return {};
  }
  return wideOf(mesh.groups[static_cast<std::size_t>(group)]);
}

}  // namespace zyn
