#include "objects/mesh/MeshFiles_win.h"

#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>

#include "model/files/MeshFile.h"
#include "model/files/MeshFileError.h"
#include "platform/Failure_win.h"
#include "platform/InputFile_win.h"
#include "platform/OutputFile_win.h"

namespace zyn {
namespace {

/// The extension with its dot; empty for none, and for what is none of ours: no letters but those
/// of ASCII.
std::string extensionOf(const std::wstring& file) {
  const std::size_t dot = file.find_last_of(L"\\/:.");
  if (dot == file.npos || file[dot] != L'.') {
    return {};
  }
  std::string extension;
  for (const wchar_t c : file.substr(dot)) {
    extension += c < 0x80 ? static_cast<char>(c) : '?';
  }
  return extension;
}

/// What is wrong with a file, which readers and writers tell in ASCII.
Failure failureOf(HRESULT code, const std::wstring& file, const MeshFileError& error) {
  const std::string_view what = error.what();
  return {code, L"\"" + file + L"\": " + std::wstring(what.begin(), what.end())};
}

}  // namespace

Mesh loadMesh(const std::wstring& file, const Progress& progress) {
  const FileBytes bytes = readFile(file);
  try {
    return readMesh(
        bytes.view(), [&](std::string_view name) { return readSibling(file, name); }, progress);
  } catch (const MeshFileError& error) {
    throw failureOf(HRESULT_FROM_WIN32(ERROR_INVALID_DATA), file, error);
  }
}

void saveMesh(const Mesh& mesh, const std::wstring& file, const Progress& progress) {
  const std::optional<MeshFormat> format = writtenFormat(extensionOf(file));
  if (!format) {
    throw Failure(E_INVALIDARG,
                  L"Fichier: \"" + file + L"\" has none of the extensions .stl, .ply, .obj, .off");
  }
  OutputFile output(file.c_str());
  const ByteSink sink = [&](std::string_view part) {
    output.write({reinterpret_cast<const std::uint8_t*>(part.data()), part.size()});
  };
  try {
    writeMesh(mesh, *format, sink, progress);
  } catch (const MeshFileError& error) {
    throw failureOf(E_INVALIDARG, file, error);
  }
  output.finish();
}

}  // namespace zyn
