#include "objects/mesh/MeshStorage_win.h"

#include <gtest/gtest.h>

#include "platform/Failure_win.h"
#include "support/TempFolder_win.h"

namespace zyn {
namespace {

const std::string kPart =
    "mtllib part.mtl\nv 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nusemtl red\nf 1 2 3 4\n";

void write(const std::filesystem::path& file, const std::string& bytes) {
  std::ofstream(file, std::ios::binary) << bytes;
}

std::string bytesOf(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// The failure of some work, as its code and its text; S_OK where there is none.
template <class Work>
std::pair<HRESULT, std::wstring> failureOf(const Work& work) {
  try {
    work();
  } catch (const Failure& failure) {
    return {failure.code(), failure.text()};
  }
  return {S_OK, L""};
}

TEST(MeshStorage, loadsAPartWithTheMaterialsBesideIt) {
  const test::TempFolder folder;
  write(folder.file(L"\u00E9.obj"), kPart);
  write(folder.file(L"part.mtl"), "newmtl red\nKd 1 0 0\n");
  const Mesh mesh = loadMesh(folder.file(L"\u00E9.obj").wstring(), {});
  EXPECT_EQ(mesh.faceCount(), 1u);
  EXPECT_EQ(mesh.faceColours, (std::vector<float>{1, 0, 0, 1}));
}

TEST(MeshStorage, tellsTheFileTheLineAndTheCause) {
  const test::TempFolder folder;
  const std::wstring file = folder.file(L"part.obj").wstring();
  write(file, kPart + "f 1 2\n");
  EXPECT_EQ(failureOf([&] { loadMesh(file, {}); }),
            std::pair(HRESULT_FROM_WIN32(ERROR_INVALID_DATA),
                      file + L": line 8: a face needs at least 3 corners, not 2"));
  EXPECT_EQ(failureOf([&] { loadMesh(folder.file(L"none.stl").wstring(), {}); }).first,
            HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
}

TEST(MeshStorage, savesInTheFormatOfTheExtension) {
  const test::TempFolder folder;
  write(folder.file(L"part.obj"), kPart);
  const Mesh mesh = loadMesh(folder.file(L"part.obj").wstring(), {});
  for (const auto& [name, begin] :
       {std::pair(L"a.stl", "binary STL"), std::pair(L"a.PLY", "ply\n"),
        std::pair(L"a.b.obj", "v 0 0 0\n"), std::pair(L"\u00E9.Off", "OFF\n")}) {
    saveMesh(mesh, folder.file(name).wstring(), {});
    EXPECT_TRUE(bytesOf(folder.file(name)).starts_with(begin)) << begin;
    EXPECT_EQ(loadMesh(folder.file(name).wstring(), {}).points, mesh.points);
  }
}

TEST(MeshStorage, leavesTheOlderFileWhereSavingFails) {
  const test::TempFolder folder;
  const std::filesystem::path file = folder.file(L"a.stl");
  write(file, "older");
  Mesh mesh;
  mesh.points = {0, 0, 0, 1, 0, 0, 0, 1e300, 0};
  mesh.corners = {0, 1, 2};
  EXPECT_EQ(
      failureOf([&] { saveMesh(mesh, file.wstring(), {}); }),
      std::pair(HRESULT_FROM_WIN32(ERROR_INVALID_DATA),
                file.wstring() + L": point 2 has a coordinate that is too large for the format"));
  mesh.points[7] = 1;
  for (int i = 0; i < 1000; ++i) {
    mesh.corners.insert(mesh.corners.end(), {0, 1, 2});
  }
  const Progress stop = [](double) { return false; };
  EXPECT_EQ(failureOf([&] { saveMesh(mesh, file.wstring(), stop); }).first, E_ABORT);
  EXPECT_EQ(bytesOf(file), "older");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

TEST(MeshStorage, knowsTheExtensionsThatItSaves) {
  for (const wchar_t* const name : {L"a.stl", L"a.PLY", L"b\\a.b.obj", L"c:.off"}) {
    EXPECT_TRUE(canSaveMesh(name)) << name;
  }
  for (const wchar_t* const name :
       {L"", L"a", L"a.3mf", L"stl", L"a.stl.", L"a.st\u0142", L"b.stl\\a"}) {
    EXPECT_FALSE(canSaveMesh(name)) << name;
  }
}

}  // namespace
}  // namespace zyn
