#include "viewer/FileDialogs_win.h"

// After windows.h:
#include <commdlg.h>

#include <array>
#include <string>

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

}  // namespace

std::optional<std::filesystem::path> askForInput(HWND owner) {
  return askForExisting(owner,
                        L"Models, programs and tables\0*.stl;*.obj;*.ply;*.off;*.3mf;*.nc;*.ngc;"
                        L"*.gcode;*.gco;*.g;*.tap;*.cnc;*.ncc;*.eia;*.csv;*.tsv\0"
                        L"Models (*.stl, *.obj, *.ply, *.off, *.3mf)\0"
                        L"*.stl;*.obj;*.ply;*.off;*.3mf\0"
                        L"Programs (*.nc, *.ngc, *.gcode, *.gco, *.g, *.tap, *.cnc, *.ncc, *.eia)\0"
                        L"*.nc;*.ngc;*.gcode;*.gco;*.g;*.tap;*.cnc;*.ncc;*.eia\0"
                        L"Tables (*.csv, *.tsv)\0*.csv;*.tsv\0All files\0*.*\0");
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
