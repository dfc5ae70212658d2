#include "objects/mesh/MeshStorage_win.h"

#include <windows.h>

#include <algorithm>
#include <optional>
#include <string_view>

#include "core/Utf8.h"
#include "model/files/MeshFile.h"
#include "model/files/MeshFileError.h"
#include "platform/Failure_win.h"
#include "platform/InputFile_win.h"
#include "platform/OutputFile_win.h"

namespace zyn {

namespace {

constexpr const wchar_t* kSeparators = L"\\/:";

/// Runs what reads or writes the content of a file.
template <class Work>
auto working(const std::wstring& file, Work work) {
  try {
    return work();
  } catch (const MeshFileError& error) {
    throw Failure(HRESULT_FROM_WIN32(ERROR_INVALID_DATA), file + L": " + wideOf(error.what()));
  } catch (const Aborted&) {
    throw Failure(E_ABORT, file + L": stopped by an event");
  }
}

std::optional<MeshFormat> formatFor(const std::wstring& file) {
  const std::size_t dot = file.find_last_of(L'.');
  const std::size_t separator = file.find_last_of(kSeparators);
  if (dot == file.npos || (separator != file.npos && dot < separator)) {
    return std::nullopt;
  }
  std::string extension;
  for (const wchar_t character : std::wstring_view(file).substr(dot)) {
    extension += character < 0x80 ? static_cast<char>(character) : '?';
  }
  return writtenFormat(extension);
}

}  // namespace

Mesh loadMesh(const std::wstring& file, const Progress& progress) {
  constexpr double kReading = 0.1;  // the part of a load that reads the file
  const auto sibling = [&](std::string_view name) { return readSibling(file, name); };
  return working(file, [&] {
    const FileBytes bytes = readFile(file, stageOf(progress, 0, kReading));
    return readMesh(bytes.view(), sibling, stageOf(progress, kReading, 1));
  });
}

bool canSaveMesh(const std::wstring& file) { return formatFor(file).has_value(); }

void saveMesh(const Mesh& mesh, const std::wstring& file, const Progress& progress) {
  OutputFile output(file.c_str());
  const auto write = [&](std::string_view bytes) {
    output.write({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  };
  working(file, [&] { writeMesh(mesh, formatFor(file).value(), write, progress); });
  output.finish();
}

}  // namespace zyn
