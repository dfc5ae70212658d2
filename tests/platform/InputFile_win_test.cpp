#include "platform/InputFile_win.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "platform/Failure_win.h"
#include "support/TempFolder_win.h"

namespace zyn {
namespace {

void write(const std::filesystem::path& file, const std::string& bytes) {
  std::ofstream(file, std::ios::binary) << bytes;
}

/// The code with which a file is refused; S_OK where it is read.
HRESULT refusal(const std::wstring& name) {
  try {
    readFile(name);
  } catch (const Failure& failure) {
    EXPECT_NE(failure.text().find(L'"' + name + L"\" was not read: "), std::wstring::npos);
    return failure.code();
  }
  return S_OK;
}

TEST(InputFile, givesAllBytesOfAFileOfAnyName) {
  const test::TempFolder folder;
  const std::string bytes("a\0\r\n\x1A\xFF", 6);
  write(folder.file(L"\u00E9\u03A9.stl"), bytes);
  EXPECT_EQ(readFile(folder.file(L"\u00E9\u03A9.stl").wstring()).view(), bytes);
  write(folder.file(L"empty"), "");
  EXPECT_EQ(readFile(folder.file(L"empty").wstring()).view(), "");
}

TEST(InputFile, failsAsTheSystemDoes) {
  const test::TempFolder folder;
  EXPECT_EQ(refusal(folder.file(L"none").wstring()), HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
  EXPECT_EQ(refusal(folder.file(L"none\\a").wstring()), HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND));
  EXPECT_EQ(refusal(folder.path().wstring()), HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED));
  EXPECT_NE(refusal(L""), S_OK);
  EXPECT_EQ(refusal(L"NUL"), HRESULT_FROM_WIN32(ERROR_BAD_FILE_TYPE));
}

TEST(InputFile, findsSiblingsByNamesInUtf8AndInTheSystemsCodePage) {
  const test::TempFolder folder;
  const std::wstring file = folder.file(L"part.obj").wstring();
  write(folder.file(L"\u00E9.mtl"), "colours");
  std::filesystem::create_directory(folder.file(L"sub"));
  write(folder.file(L"sub\\b.mtl"), "more");
  EXPECT_EQ(readSibling(file, "\xC3\xA9.mtl"), "colours");
  EXPECT_EQ(readSibling(file, "sub/b.mtl"), "more");
  EXPECT_EQ(readSibling(file, "none.mtl"), std::nullopt);
  EXPECT_EQ(readSibling(file, ""), std::nullopt);
  if (GetACP() == 1252) {
    EXPECT_EQ(readSibling(file, "\xE9.mtl"), "colours");
  }
}

TEST(InputFile, TellsHowFarItIsAndStops) {
  const test::TempFolder folder;
  const auto file = folder.file(L"large").wstring();
  write(file, std::string(40'000'000, ' '));
  std::vector<double> parts;
  const Progress hear = [&](double part) {
    parts.push_back(part);
    return true;
  };
  EXPECT_EQ(readFile(file, hear).view().size(), 40'000'000U);
  ASSERT_GE(parts.size(), 3U);
  EXPECT_EQ(parts.front(), 0);
  EXPECT_EQ(parts.back(), 1);
  EXPECT_TRUE(std::is_sorted(parts.begin(), parts.end()));
  for (const double last : {0.0, 0.4}) {
    EXPECT_THROW(readFile(file, [&](double part) { return part < last; }), Aborted);
  }
}

}  // namespace
}  // namespace zyn
