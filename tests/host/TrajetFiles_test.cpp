// Files of programs as they come: encodings, ends of lines, odd bytes and lengths, names of every
// kind, and files that cannot be read. What fails tells the file and its cause, and changes
// nothing.
#include <optional>

#include "support/ArrayVariant_win.h"
#include "support/EventListener_win.h"
#include "support/FailingImport_win.h"
#include "support/LateBinding_win.h"
#include "support/TempFolder_win.h"

namespace zyn::test {
namespace {

using Numbers = std::vector<double>;

class TrajetFiles : public HostTest {
 protected:
  TrajetFiles() { startOver(); }

  void startOver() const {
    require(path_->setPoints(doubleArray({0, 0, 0, 3, 0, 0, 3, 4, 0})), "setPoints");
    require(path_->put_Position(4), "Position");
  }

  CallResult load(const std::wstring& name) const {
    return callMethod(path_.Get(), L"ChargerGCode", {_bstr_t(name.c_str())});
  }
  CallResult loadText(const std::string& program) const {
    writeFile(file_, program);
    return load(file_.wstring());
  }
  double number(const wchar_t* name) const { return getProperty(path_.Get(), name).value; }
  Numbers points() const { return doublesIn(callMethod(path_.Get(), L"getPoints").value); }

  /// With this code and the file's name.
  void expectFailure(const CallResult& result, HRESULT code, const std::wstring& name) const {
    const std::string told(result.description.begin(), result.description.end());
    EXPECT_EQ(result.code(), code) << told;
    EXPECT_NE(result.description.find(name), std::wstring::npos) << told;
    EXPECT_EQ(points(), (Numbers{0, 0, 0, 3, 0, 0, 3, 4, 0})) << told;
    EXPECT_EQ(number(L"Position"), 4) << told;
  }
  void expectContentError(const std::string& program, std::size_t line,
                          std::optional<std::size_t> column = std::nullopt) const {
    startOver();
    const CallResult result = loadText(program);
    const std::wstring place =
        L", line " + std::to_wstring(line) +
        (column ? L", column " + std::to_wstring(*column) + L": " : std::wstring(L", column "));
    expectFailure(result, E_FAIL, file_.wstring() + place);
  }
  /// A move to x = 1 in line 1, to x = 2 in line 3.
  void expectLoaded(const std::string& program) const {
    const CallResult result = loadText(program);
    ASSERT_EQ(result.code(), S_OK)
        << std::string(result.description.begin(), result.description.end());
    EXPECT_EQ(points(), (Numbers{0, 0, 0, 1, 0, 0, 2, 0, 0}));
    require(path_->put_PositionSegment(0), "PositionSegment");
    EXPECT_EQ(number(L"PositionLigne"), 1);
    require(path_->put_PositionSegment(1), "PositionSegment");
    EXPECT_EQ(number(L"PositionLigne"), 3);
  }

  TempFolder folder_;
  std::filesystem::path file_ = folder_.file(L"part.nc");
  ComPtr<IZYNGLTrajet> path_ = createObject<IZYNGLTrajet>(kPathProgId);
};

TEST_F(TrajetFiles, LinesEndInAnyWay) {
  for (const std::string end : {"\n", "\r\n", "\r"}) {
    const std::string program = "G1 X1 F60" + end + end + "X2";
    SCOPED_TRACE(end.size());
    expectLoaded(program);
    expectLoaded(program + end);
    expectLoaded(program + end + end + "M30" + end + "G77 nonsense" + end);
    expectLoaded("\xEF\xBB\xBF" + program);
    expectLoaded(program + " (\xC3\xA9t\xC3\xA9)" + end);
  }
  expectLoaded("G1 X1 F60\r\n\nX2");
}

TEST_F(TrajetFiles, WithoutMotionThereIsNoSegment) {
  for (const std::string program : {"", "\n", "%", "%\n%\n", "\xEF\xBB\xBF", "(nothing)", "   ",
                                    ";\r", "M2\nG1 X5\n", "G0", "G4 P0\n"}) {
    ASSERT_EQ(loadText(program).code(), S_OK) << program;
    EXPECT_EQ(number(L"NbSegments"), 0) << program;
    EXPECT_EQ(number(L"Longueur"), 0);
    EXPECT_EQ(number(L"Duree"), 0);
    EXPECT_EQ(number(L"Position"), 0);
  }
}

TEST_F(TrajetFiles, APercentSignBeginsAndEnds) {
  ASSERT_EQ(loadText("%\nG1 X1 F60\n%\nG77 nonsense\n").code(), S_OK);
  EXPECT_EQ(number(L"Longueur"), 1);
  ASSERT_EQ(loadText("(part)\n\n%\nG1 X1 F60\n%").code(), S_OK);
  EXPECT_EQ(number(L"Longueur"), 1);
  ASSERT_EQ(loadText("G1 X1 F60\n%\nX2\n").code(), S_OK);
  EXPECT_EQ(number(L"Longueur"), 1);
}

TEST_F(TrajetFiles, OddBytesAreErrorsWhereTheyStand) {
  using namespace std::string_literals;
  expectContentError("G1 X1 F60\n\0X2\n"s, 2, 1);
  expectContentError("G1 X1\0 F60\n"s, 1, 6);
  expectContentError("G1 X\xFF\n", 1, 4);
  expectContentError("\x7F", 1, 1);
  expectContentError("G1 X1 F60\n\n  \xC3\xA9", 3, 3);
  // Of two bytes a character, with and without a mark.
  expectContentError("\xFF\xFEG\0001\0\n\0"s, 1, 1);
  expectContentError("\xFE\xFF\0G\0001\0\n"s, 1, 1);
  expectContentError("G\0001\0 \0X\0001\0\n\0"s, 1);
  std::string noise;
  for (int i = 0; i < 70000; ++i) noise += static_cast<char>(i * 7919 >> 3);
  EXPECT_EQ(loadText(noise).code(), E_FAIL);
  expectContentError("PK\x03\x04", 1);
}

TEST_F(TrajetFiles, BytesInCommentsAreTheirOwn) {
  using namespace std::string_literals;
  expectLoaded("G1 (a\0b \xFF %) X1 F60 ; \x01 \xFE\n\nX2 ;"s);
}

TEST_F(TrajetFiles, LinesOfAMillionCharacters) {
  constexpr std::size_t kLong = 1000000;
  const std::string ones(kLong, '1');
  const std::string blanks(kLong, ' ');
  expectLoaded("G1 X1 F60 (" + ones + ")\n" + blanks + "\nX" + blanks + "2");
  expectLoaded("G1 X" + std::string(kLong, '0') + "1 F60\n\nX2." + std::string(kLong, '0'));
  std::string sum = "[0";
  while (sum.size() < kLong) sum += "+0";
  expectLoaded("G1 X1 F60\n\nX" + sum + "+2]");
  std::string assignments;
  while (assignments.size() < kLong) assignments += "#1=2";
  expectLoaded("G1 X1 F60\n" + assignments + "\nX#1");
  expectContentError("G1 X" + ones + " F60\n", 1, 5);
  expectContentError("G1 F60 X1 (" + ones, 1, 11);
  expectContentError(ones, 1);
  expectContentError("G1 F60 X1" + blanks + "Q", 1);
}

TEST_F(TrajetFiles, ExpressionsOfAnyDepth) {
  constexpr std::size_t kDeep = 1000000;
  const auto repeated = [](const std::string& text) {
    std::string all;
    for (std::size_t i = 0; i < kDeep; ++i) all += text;
    return all;
  };
  // Whether they are read or refused: no call stack ends here.
  const std::string programs[] = {"G1 F60 X" + repeated("[") + "1" + repeated("]"),
                                  "G1 F60 X" + repeated("["),
                                  "G1 F60 X" + repeated("-") + "1",
                                  "G1 F60 X[" + repeated("-") + "1]",
                                  "G1 F60 X" + repeated("#") + "1",
                                  "#" + repeated("#") + "1=1",
                                  "G1 F60 X" + repeated("ABS[") + "1" + repeated("]"),
                                  "G1 F60 X" + repeated("#["),
                                  "G1 F60 X[" + repeated("2**") + "1]",
                                  repeated("(") + repeated(")"),
                                  repeated("/")};
  for (const std::string& program : programs) {
    const CallResult result = loadText(program);
    EXPECT_TRUE(result.code() == S_OK || result.code() == E_FAIL) << program.substr(0, 12);
  }
  ASSERT_EQ(loadText("G1 F60 X" + std::string(20, '[') + "1" + std::string(20, ']')).code(), S_OK);
  EXPECT_EQ(number(L"Longueur"), 1);
}

TEST_F(TrajetFiles, NamesOfEveryKind) {
  for (const std::wstring name : {L"\x394 \x4E2D \x5D0.nc", L"\xD83D\xDE00 face.tap",
                                  L"no extension", L"a;b'c&d%20.nc", L".nc", L"PART.NC"}) {
    const auto file = folder_.file(name);
    writeFile(file, "G1 X1 F60\n");
    EXPECT_EQ(load(file.wstring()).code(), S_OK);
    EXPECT_EQ(number(L"Longueur"), 1);
    writeFile(file, "G77\n");
    const CallResult wrong = load(file.wstring());
    EXPECT_EQ(wrong.code(), E_FAIL);
    EXPECT_EQ(wrong.description.rfind(file.wstring() + L", line 1, column 1: ", 0), 0U);
    require(path_->setPoints(doubleArray({})), "setPoints");
  }
}

TEST_F(TrajetFiles, NamesRelativeToTheCurrentFolder) {
  writeFile(file_, "G1 X1 F60\n");
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(folder_.path());
  const CallResult here = load(L"part.nc");
  const CallResult slashed = load(L".//./part.nc");
  std::filesystem::current_path(before);
  EXPECT_EQ(here.code(), S_OK);
  EXPECT_EQ(slashed.code(), S_OK);
}

TEST_F(TrajetFiles, NamesLongerThanUsual) {
  std::wstring folder = L"\\\\?\\" + folder_.path().wstring();
  for (wchar_t& each : folder) each = each == L'/' ? L'\\' : each;
  std::vector<std::wstring> made;
  while (folder.size() < 400) {
    folder += L"\\a folder of some length, in which there is another one";
    ASSERT_TRUE(CreateDirectoryW(folder.c_str(), nullptr));
    made.push_back(folder);
  }
  const std::wstring file = folder + L"\\part.nc";
  const HANDLE opened =
      CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
  ASSERT_NE(opened, INVALID_HANDLE_VALUE);
  DWORD written = 0;
  const bool isWritten = WriteFile(opened, "G1 X1 F60", 9, &written, nullptr);
  CloseHandle(opened);
  EXPECT_TRUE(isWritten);
  const CallResult loaded = load(file);
  DeleteFileW(file.c_str());
  for (auto each = made.rbegin(); each != made.rend(); ++each) RemoveDirectoryW(each->c_str());
  EXPECT_EQ(loaded.code(), S_OK) << std::string(loaded.description.begin(),
                                                loaded.description.end());
  EXPECT_EQ(number(L"Longueur"), 1);
}

TEST_F(TrajetFiles, WhatIsNoFileIsAnErrorOfTheSystem) {
  expectFailure(load(folder_.path().wstring()), HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED),
                folder_.path().wstring());
  const auto none = folder_.file(L"none.nc").wstring();
  expectFailure(load(none), HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), none);
  const auto nowhere = (folder_.path() / L"no folder" / L"part.nc").wstring();
  expectFailure(load(nowhere), HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND), nowhere);
  const auto cause = L"\"NUL\" was not read: it is a device or a pipe, no file on a disk";
  expectFailure(load(L"NUL"), HRESULT_FROM_WIN32(ERROR_BAD_FILE_TYPE), cause);
}

TEST_F(TrajetFiles, AFileThatAnotherProgramKeepsToItself) {
  writeFile(file_, "G1 X1 F60\n");
  const HANDLE locked = CreateFileW(file_.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(locked, INVALID_HANDLE_VALUE);
  expectFailure(load(file_.wstring()), HRESULT_FROM_WIN32(ERROR_SHARING_VIOLATION),
                file_.wstring());
  CloseHandle(locked);
  const HANDLE shared = CreateFileW(file_.c_str(), GENERIC_READ | GENERIC_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(shared, INVALID_HANDLE_VALUE);
  EXPECT_EQ(load(file_.wstring()).code(), S_OK);
  CloseHandle(shared);
  EXPECT_TRUE(DeleteFileW(file_.c_str())) << "it is kept open";
}

TEST_F(TrajetFiles, FailuresOfTheSystemHaveItsCode) {
  writeFile(file_, "G1 X1 F60\n");
  const HMODULE library = GetModuleHandleW(L"ZYNVue.dll");
  for (const auto& [function, error] :
       {std::pair<const char*, DWORD>{"ReadFile", ERROR_CRC}, {"GetFileSizeEx", ERROR_NOT_READY}}) {
    const FailingImport failing(library, function, {0, error});
    expectFailure(load(file_.wstring()), HRESULT_FROM_WIN32(error), file_.wstring());
    EXPECT_TRUE(failing.calls().hasFailed()) << function;
  }
  {
    const FailingImport failing(
        library, "CreateFileW",
        {reinterpret_cast<std::uintptr_t>(INVALID_HANDLE_VALUE), ERROR_TOO_MANY_OPEN_FILES});
    expectFailure(load(file_.wstring()), HRESULT_FROM_WIN32(ERROR_TOO_MANY_OPEN_FILES),
                  file_.wstring());
  }
  EXPECT_EQ(load(file_.wstring()).code(), S_OK);
  EXPECT_TRUE(DeleteFileW(file_.c_str())) << "it is kept open";
}

/// A file of another length than it told, as another program may leave it.
TEST_F(TrajetFiles, AFileThatEndsSoonerThanItSaid) {
  writeFile(file_, "G1 X1 F60\n");
  const FailingImport failing(GetModuleHandleW(L"ZYNVue.dll"), "ReadFile", {TRUE, 0});
  expectFailure(load(file_.wstring()), HRESULT_FROM_WIN32(ERROR_HANDLE_EOF), file_.wstring());
}

TEST_F(TrajetFiles, ErrorsTellNoProgressOfTheEnd) {
  HeardEvents events;
  require(events.attach(path_.Get()), "Vue");
  std::string program = "G1 F100\n";
  for (int i = 0; i < 20000; ++i) program += "G1 X" + std::to_string(i) + "\n";
  expectContentError(program + "G77\n" + program, 20002, 1);
  ASSERT_FALSE(events.listener().parts.empty());
  EXPECT_LT(events.listener().parts.back(), 0.6);
}

}  // namespace
}  // namespace zyn::test
