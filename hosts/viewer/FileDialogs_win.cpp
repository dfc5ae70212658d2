#include "viewer/FileDialogs_win.h"

// After windows.h:
#include <commdlg.h>

#include <array>
#include <string>

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
std::wstring pictureFilter(const std::wstring& extension) {
  using namespace std::string_literals;
  return L"Picture (*."s + extension + L")\0*."s + extension + L"\0"s;
}

}  // namespace

std::optional<std::filesystem::path> askForInput(HWND owner) {
  Buffer file = {};
  OPENFILENAMEW asked = question(owner, file,
                                 L"Models and tables (*.stl, *.obj, *.csv, *.tsv)\0"
                                 L"*.stl;*.obj;*.csv;*.tsv\0All files\0*.*\0");
  asked.Flags = OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  return GetOpenFileNameW(&asked) ? std::optional<std::filesystem::path>(file.data())
                                  : std::nullopt;
}

std::optional<std::filesystem::path> askForPicture(HWND owner,
                                                   const std::filesystem::path& proposal,
                                                   PictureFormat format) {
  Buffer file = {};
  proposal.wstring().copy(file.data(), file.size() - 1);
  const std::wstring extension = host::toWide(extensionOf(format));
  const std::wstring filter = pictureFilter(extension);
  OPENFILENAMEW asked = question(owner, file, filter.c_str());
  asked.lpstrDefExt = extension.c_str();
  asked.Flags = OFN_OVERWRITEPROMPT | OFN_HIDEREADONLY | OFN_PATHMUSTEXIST | OFN_NOCHANGEDIR;
  return GetSaveFileNameW(&asked) ? std::optional<std::filesystem::path>(file.data())
                                  : std::nullopt;
}

}  // namespace zyn::viewer
