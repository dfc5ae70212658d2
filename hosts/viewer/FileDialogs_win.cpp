#include "viewer/FileDialogs_win.h"

// After windows.h:
#include <commdlg.h>

#include <array>
#include <string>

#include "common/FileKind.h"
#include "common/Utf8_win.h"

namespace zyn::viewer {

namespace {

using Buffer = std::array<wchar_t, 4096>;

OPENFILENAMEW question(HWND owner, Buffer& file, const wchar_t* filter) {
  OPENFILENAMEW question = {};
  question.lStructSize = sizeof question;
  question.hwndOwner = owner;
  question.lpstrFilter = filter;
  question.lpstrFile = file.data();
  question.nMaxFile = static_cast<DWORD>(file.size());
  return question;
}

/// "Picture (*.png)\0*.png\0"; c_str() adds the second terminator.
std::wstring filterOf(const wchar_t* what, const std::wstring& extension) {
  using namespace std::string_literals;
  return what + L" (*"s + extension + L")\0*"s + extension + L"\0"s;
}

std::optional<std::filesystem::path> askForExisting(HWND owner, const wchar_t* filter) {
  Buffer file = {};
  OPENFILENAMEW asked = question(owner, file, filter);
  asked.Flags = OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  return GetOpenFileNameW(&asked) ? std::optional<std::filesystem::path>(file.data())
                                  : std::nullopt;
}

/// "*.nc;*.ngc;...".
std::wstring programPatterns() {
  std::wstring patterns = L"*";
  for (const wchar_t letter : host::toWide(host::programEndings())) {
    patterns += letter == L' ' ? std::wstring(L";*") : std::wstring(1, letter);
  }
  return patterns;
}

}  // namespace

std::optional<std::filesystem::path> askForInput(HWND owner) {
  const std::wstring models = L"*.stl;*.obj;*.ply;*.off;*.3mf";
  const std::wstring tables = L"*.csv;*.tsv;*.txt";
  const std::wstring programs = programPatterns();
  const std::wstring kinds[][2] = {
      {L"Models, programs and tables", models + L';' + programs + L';' + tables},
      {L"Models (*.stl, *.obj, *.ply, *.off, *.3mf)", models},
      {L"Programs (*.nc, *.ngc, *.gcode, *.tap, *.cnc ...)", programs},
      {L"Tables (*.csv, *.tsv, *.txt)", tables},
      {L"All files", L"*.*"}};
  std::wstring filter;
  for (const auto& [name, patterns] : kinds) {
    filter += name + L'\0' + patterns + L'\0';
  }
  return askForExisting(owner, filter.c_str());
}

std::optional<std::filesystem::path> askForCamera(HWND owner) {
  return askForExisting(owner, filterOf(L"Camera", L".camera").c_str());
}

std::optional<std::filesystem::path> askForOutput(HWND owner, const std::filesystem::path& proposal,
                                                  const wchar_t* what) {
  Buffer file = {};
  proposal.wstring().copy(file.data(), file.size() - 1);
  const std::wstring extension = proposal.extension().wstring();
  const std::wstring filter = filterOf(what, extension);
  OPENFILENAMEW asked = question(owner, file, filter.c_str());
  asked.lpstrDefExt = extension.c_str() + 1;
  asked.Flags = OFN_OVERWRITEPROMPT | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST | OFN_NOCHANGEDIR;
  return GetSaveFileNameW(&asked) ? std::optional<std::filesystem::path>(file.data())
                                  : std::nullopt;
}

}  // namespace zyn::viewer
