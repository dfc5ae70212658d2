// Pictures that cannot be written: the older file of that name stays as it was, nothing else is
// left, and the error information says why.
#include <set>

#include "support/FailingImport_win.h"
#include "support/ImageDecoder_win.h"
#include "support/LateBinding_win.h"
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

enum class Format { Bmp, Png, Gif, Jpg };
constexpr Format kFormats[] = {Format::Bmp, Format::Png, Format::Gif, Format::Jpg};

std::ostream& operator<<(std::ostream& out, Format format) {
  constexpr const char* kNames[] = {"BMP", "PNG", "GIF", "JPEG"};
  return out << kNames[static_cast<int>(format)];
}

/// Why the last call of this thread made no picture; nothing where it made one.
std::wstring reason() {
  ComPtr<IErrorInfo> info;
  _bstr_t text;
  if (GetErrorInfo(0, &info) == S_OK) info->GetDescription(text.GetAddress());
  return text.length() > 0 ? std::wstring(text) : std::wstring();
}

bool names(const std::wstring& text, const std::wstring& what) {
  return text.find(what) != std::wstring::npos;
}

std::string narrow(const std::wstring& text) {
  const std::u8string utf8 = std::filesystem::path(text).u8string();
  return {utf8.begin(), utf8.end()};
}

/// The system's message for an error of its own.
std::wstring messageOf(DWORD error) {
  wchar_t text[512] = L"";
  const DWORD length =
      FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0,
                     std::data(text), static_cast<DWORD>(std::size(text)), nullptr);
  const std::wstring message(std::data(text), length);
  return message.substr(0, message.find_first_of(L"\r\n"));
}

const Bytes kOlder = {'o', 'l', 'd', 'e', 'r'};

/// A handle to a file that somebody else has open.
class HeldFile {
 public:
  HeldFile(const std::filesystem::path& file, DWORD sharing)
      : handle_(CreateFileW(file.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING,
                            FILE_ATTRIBUTE_NORMAL, nullptr)) {
    if (handle_ == INVALID_HANDLE_VALUE) throw std::runtime_error("not held");
  }
  ~HeldFile() { CloseHandle(handle_); }
  HeldFile(const HeldFile&) = delete;
  HeldFile& operator=(const HeldFile&) = delete;

 private:
  HANDLE handle_;
};

class FailingExportTest : public HostTest, public testing::WithParamInterface<OffscreenClass> {
 protected:
  FailingExportTest() {
    scene_->addAll(makeRectangle(0, 4, 0, 3, 0, kRed));
    writeFile(file_, {kOlder.begin(), kOlder.end()});
  }

  HRESULT exportAs(Format format, const std::filesystem::path& temporary, int quality = 90) {
    return exportBy(*scene_, format, temporary, quality);
  }
  HRESULT exportAs(Format format) { return exportAs(format, folder_.file(L"spare.bmp")); }

  HRESULT exportBy(OffscreenContext& context, Format format, const std::filesystem::path& temporary,
                   int quality = 90) {
    switch (format) {
      case Format::Bmp:
        return context.CreateBitmap(bstr(file_));
      case Format::Png:
        return context.CreatePNG(bstr(temporary), bstr(file_));
      case Format::Gif:
        return context.CreateGIF(bstr(temporary), bstr(file_));
      default:
        return context.CreateJPG(bstr(temporary), bstr(file_), quality);
    }
  }

  std::ptrdiff_t files() const {
    return std::distance(std::filesystem::directory_iterator(folder_.path()), {});
  }

  void expectOlder(Format format) const {
    EXPECT_EQ(readFile(file_), kOlder) << format;
    EXPECT_EQ(files(), 1) << format;
  }
  /// The same with a reason that names the file and the cause.
  void expectOlder(Format format, const std::wstring& cause) const {
    const std::wstring said = reason();
    expectOlder(format);
    EXPECT_TRUE(names(said, file_.wstring()) && names(said, cause))
        << format << ": " << narrow(said);
  }
  void expectPicture(Format format) const {
    EXPECT_EQ(reason(), L"") << format;
    EXPECT_EQ(files(), 1) << format;
    const Image image = decodeImageFile(file_).image;
    EXPECT_EQ(image.width(), 40) << format;
    EXPECT_LE(difference(image.at(20, 15), kRed), 8) << format;
  }

  std::unique_ptr<OffscreenContext> scene_ = GetParam().make(40, 30);
  HMODULE library_ = GetModuleHandleW(L"ZYNVue.dll");
  TempFolder folder_;
  std::filesystem::path file_ = folder_.file(L"picture");
};

TEST_P(FailingExportTest, APictureThatIsWrittenGivesNoReason) {
  for (const Format format : kFormats) {
    SetErrorInfo(0, nullptr);
    EXPECT_EQ(exportAs(format), S_OK);
    expectPicture(format);
  }
}

// Any of the writes, up to the last.
TEST_P(FailingExportTest, AFullDisk) {
  for (const Format format : kFormats) {
    std::uint32_t writes = 0;
    {
      const FailingImport counter(library_, "WriteFile", {}, FailingCalls::kAll);
      exportAs(format);
      writes = counter.calls().made;
    }
    writeFile(file_, {kOlder.begin(), kOlder.end()});
    ASSERT_GE(writes, 2U) << format;
    for (const std::uint32_t failing : {1U, 2U, writes / 2, writes - 1, writes}) {
      const FailingImport full(library_, "WriteFile", {0, ERROR_DISK_FULL}, failing, 1);
      EXPECT_EQ(exportAs(format), S_OK);
      EXPECT_TRUE(full.calls().hasFailed());
      const std::wstring said = reason();
      EXPECT_TRUE(names(said, messageOf(ERROR_DISK_FULL))) << format << ": " << narrow(said);
      expectOlder(format);
    }
  }
}

TEST_P(FailingExportTest, AFileThatOthersHave) {
  for (const Format format : kFormats) {
    const HeldFile held(file_, FILE_SHARE_READ);
    EXPECT_EQ(exportAs(format), S_OK);
    expectOlder(format, L"(error ");
  }
}

TEST_P(FailingExportTest, AFileThatIsReadOnly) {
  SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_READONLY);
  for (const Format format : kFormats) {
    EXPECT_EQ(exportAs(format), S_OK);
    expectOlder(format, messageOf(ERROR_ACCESS_DENIED));
  }
  SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_P(FailingExportTest, ANameThatCannotBeHad) {
  for (const Format format : kFormats) {
    const FailingImport move(library_, "MoveFileExW", {0, ERROR_WRITE_PROTECT});
    EXPECT_EQ(exportAs(format), S_OK);
    EXPECT_TRUE(names(reason(), messageOf(ERROR_WRITE_PROTECT))) << format;
    expectOlder(format);
  }
}

// The older file's access rights go over to the new one, and may forbid what is left to be done.
std::set<std::wstring> guarded;
BOOL WINAPI guardFile(const wchar_t* name, SECURITY_INFORMATION, void*) {
  guarded.insert(name);
  return TRUE;
}
BOOL refuseGuarded() {
  SetLastError(ERROR_ACCESS_DENIED);
  return FALSE;
}
BOOL WINAPI moveUnguarded(const wchar_t* from, const wchar_t* to, DWORD flags) {
  return guarded.contains(from) ? refuseGuarded() : MoveFileExW(from, to, flags);
}
BOOL WINAPI deleteUnguarded(const wchar_t* name) {
  return guarded.contains(name) ? refuseGuarded() : DeleteFileW(name);
}

TEST_P(FailingExportTest, AccessRightsThatForbidToRenameAndToDelete) {
  const ImportPatch guard(library_, "SetFileSecurityW", reinterpret_cast<const void*>(&guardFile));
  const ImportPatch move(library_, "MoveFileExW", reinterpret_cast<const void*>(&moveUnguarded));
  const ImportPatch remove(library_, "DeleteFileW",
                           reinterpret_cast<const void*>(&deleteUnguarded));
  for (const Format format : kFormats) {
    EXPECT_EQ(exportAs(format), S_OK);
    expectOlder(format, messageOf(ERROR_ACCESS_DENIED));
  }
}

std::filesystem::path older;
BOOL WINAPI writeBesideReadOnly(HANDLE file, const void* bytes, DWORD count, DWORD* written,
                                OVERLAPPED* overlapped) {
  SetFileAttributesW(older.c_str(), FILE_ATTRIBUTE_READONLY);
  return WriteFile(file, bytes, count, written, overlapped);
}

TEST_P(FailingExportTest, AFileThatBecomesReadOnlyMeanwhile) {
  older = file_;
  const FailingImport move(library_, "MoveFileExW", {0, ERROR_ACCESS_DENIED});
  const ImportPatch write(library_, "WriteFile",
                          reinterpret_cast<const void*>(&writeBesideReadOnly));
  for (const Format format : kFormats) {
    EXPECT_EQ(exportAs(format), S_OK);
    EXPECT_TRUE(names(reason(), messageOf(ERROR_ACCESS_DENIED))) << format;
    SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_NORMAL);
    expectOlder(format);
  }
}

TEST_P(FailingExportTest, APictureTooWideForItsFormat) {
  const auto wide = GetParam().make(65536, 2);
  for (const Format format : {Format::Gif, Format::Jpg}) {
    EXPECT_EQ(exportBy(*wide, format, folder_.file(L"spare.bmp")), S_OK);
    expectOlder(format, L"65535");
  }
}

TEST_P(FailingExportTest, NoSuchFolder) {
  std::filesystem::remove(file_);
  file_ = folder_.path() / L"none" / L"picture";
  for (const Format format : kFormats) {
    EXPECT_EQ(exportAs(format), S_OK);
    EXPECT_TRUE(names(reason(), file_.wstring())) << format;
    EXPECT_TRUE(folder_.empty()) << format;
  }
}

TEST_P(FailingExportTest, ATemporaryNameThatIsTheTarget) {
  for (const Format format : {Format::Png, Format::Gif, Format::Jpg}) {
    for (const bool isThere : {true, false}) {
      writeFile(file_, {kOlder.begin(), kOlder.end()});
      if (!isThere) std::filesystem::remove(file_);
      EXPECT_EQ(exportAs(format, file_), S_OK);
      expectPicture(format);
    }
    writeFile(file_, {kOlder.begin(), kOlder.end()});
    EXPECT_EQ(exportAs(format, folder_.path() / L"." / L"PICTURE"), S_OK);
    expectPicture(format);
    writeFile(file_, {kOlder.begin(), kOlder.end()});
    const FailingImport full(library_, "WriteFile", {0, ERROR_DISK_FULL});
    EXPECT_EQ(exportAs(format, file_), S_OK);
    expectOlder(format, messageOf(ERROR_DISK_FULL));
  }
}

TEST_P(FailingExportTest, AReplacedFileIsANewOneWithTheAttributesOfTheOlder) {
  const auto longAgo = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1000);
  for (const Format format : kFormats) {
    std::filesystem::last_write_time(file_, longAgo);
    SetFileAttributesW(file_.c_str(),
                       FILE_ATTRIBUTE_HIDDEN);  // after the time: Wine 10 drops it then
    EXPECT_EQ(exportAs(format), S_OK);
    expectPicture(format);
    EXPECT_TRUE(GetFileAttributesW(file_.c_str()) & FILE_ATTRIBUTE_HIDDEN);
    EXPECT_GT(std::filesystem::last_write_time(file_), longAgo + std::chrono::hours(999)) << format;
  }
}

// The file that lies behind a link stays as it is: the name leads to a new one.
TEST_P(FailingExportTest, ALinkIsReplacedByAFile) {
  const std::filesystem::path behind = folder_.file(L"behind");
  std::filesystem::rename(file_, behind);
  const auto expectReplaced = [&](Format format) {
    EXPECT_EQ(exportAs(format), S_OK);
    EXPECT_EQ(reason(), L"") << format;
    EXPECT_EQ(readFile(behind), kOlder) << format;
    EXPECT_EQ(decodeImageFile(file_).image.width(), 40) << format;
    EXPECT_EQ(files(), 2) << format;
    std::filesystem::remove(file_);
  };
  for (const Format format : kFormats) {
    ASSERT_TRUE(CreateHardLinkW(file_.c_str(), behind.c_str(), nullptr));
    expectReplaced(format);
    if (CreateSymbolicLinkW(file_.c_str(), behind.c_str(), 0)) {  // few users may make such a link
      expectReplaced(format);
    }
  }
}

// A program that reads every file that changes, and lets go of it in a moment.
std::unique_ptr<HeldFile> scanner;
void WINAPI sleepUntilScanned(DWORD) { scanner.reset(); }

TEST_P(FailingExportTest, AScannerChangesNothing) {
  const ImportPatch sleep(library_, "Sleep", reinterpret_cast<const void*>(&sleepUntilScanned));
  for (const DWORD sharing :
       std::initializer_list<DWORD>{FILE_SHARE_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE}) {
    for (const int quality : {10, 90}) {
      exportAs(Format::Jpg, folder_.file(L"spare.bmp"), quality);
      const Bytes undisturbed = readFile(file_);
      scanner = std::make_unique<HeldFile>(file_, sharing);
      EXPECT_EQ(exportAs(Format::Jpg, folder_.file(L"spare.bmp"), 100 - quality), S_OK);
      scanner.reset();
      EXPECT_NE(readFile(file_), undisturbed);
      expectPicture(Format::Jpg);
      scanner = std::make_unique<HeldFile>(file_, sharing);
      EXPECT_EQ(exportAs(Format::Jpg, folder_.file(L"spare.bmp"), quality), S_OK);
      scanner.reset();
      EXPECT_EQ(readFile(file_), undisturbed) << quality;
    }
  }
}

/// CreateFile as programs without long paths find it.
HANDLE WINAPI createFileOfShortName(const wchar_t* name, DWORD access, DWORD sharing,
                                    SECURITY_ATTRIBUTES* security, DWORD disposition, DWORD flags,
                                    HANDLE pattern) {
  if (std::wcslen(name) >= MAX_PATH) {
    SetLastError(ERROR_PATH_NOT_FOUND);
    return INVALID_HANDLE_VALUE;
  }
  return CreateFileW(name, access, sharing, security, disposition, flags, pattern);
}

TEST_P(FailingExportTest, AFolderMayHaveTheLongestNameOfAll) {
  constexpr std::size_t kLongestFolder = 247;
  std::filesystem::path folder = folder_.path();
  while (folder.wstring().size() + 60 < kLongestFolder) folder /= std::wstring(50, L'd');
  folder /= std::wstring(kLongestFolder - 1 - folder.wstring().size(), L'd');
  std::filesystem::create_directories(folder);
  file_ = folder / L"a";
  const ImportPatch create(library_, "CreateFileW",
                           reinterpret_cast<const void*>(&createFileOfShortName));
  for (const Format format : kFormats) {
    exportAs(format, folder / L"t");
    EXPECT_EQ(reason(), L"") << format;
    EXPECT_TRUE(std::filesystem::remove(file_)) << format;
    EXPECT_TRUE(std::filesystem::is_empty(folder)) << format;
  }
}

// --- surfaces ------------------------------------------------------------------------------------

TEST_P(FailingExportTest, ASurfaceThatCannotBeMadeSaysWhy) {
  for (const long width : {0L, -5L, 2000000000L}) {
    const auto context = GetParam().makeBare();
    long made = 0;
    EXPECT_EQ(context->create(width, 30, &made), S_OK);
    EXPECT_EQ(made, 1);
    EXPECT_TRUE(names(reason(), L"There can be no picture of " + std::to_wstring(width))) << width;
    EXPECT_EQ(exportBy(*context, Format::Png, folder_.file(L"spare.bmp")), S_OK);
    EXPECT_TRUE(names(reason(), std::to_wstring(width))) << width;
    expectOlder(Format::Png);
  }
}

TEST_P(FailingExportTest, SystemsWithoutOpenGlAreNamed) {
  for (const char* function : {"SetPixelFormat", "CreateDIBSection", "CreateFileMappingW"}) {
    const FailingImport failing(library_, function, {0, 1450});
    long made = 0;
    EXPECT_EQ(scene_->create(40, 30, &made), S_OK);
    EXPECT_NE(reason(), L"") << function;
  }
}

TEST_P(FailingExportTest, WithoutASurfaceThereIsAReasonToo) {
  const auto context = GetParam().makeBare();
  for (const Format format : kFormats) {
    EXPECT_EQ(exportBy(*context, format, folder_.file(L"spare.bmp")), S_OK);
    EXPECT_NE(reason(), L"") << format;
    expectOlder(format);
  }
}

TEST_P(FailingExportTest, APictureObjectThatCannotBeMadeSaysWhy) {
  ComPtr<IPictureDisp> picture;
  {
    const FailingImport failing(library_, "OleCreatePictureIndirect",
                                {static_cast<std::uint32_t>(E_OUTOFMEMORY), 0});
    EXPECT_EQ(scene_->GetPictureDisp(&picture), S_OK);
    EXPECT_FALSE(picture);
    EXPECT_NE(reason(), L"");
  }
  EXPECT_EQ(scene_->GetPictureDisp(&picture), S_OK);
  EXPECT_TRUE(picture);
  EXPECT_EQ(reason(), L"");
}

// A caller by name is answered alike.
TEST_P(FailingExportTest, TheReasonIsThereForCallsByName) {
  SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(callMethod(scene_->dispatch(), L"CreateBitmap", {bstr(file_)}).code(), S_OK);
  expectOlder(Format::Bmp, messageOf(ERROR_ACCESS_DENIED));
  SetFileAttributesW(file_.c_str(), FILE_ATTRIBUTE_NORMAL);
}

INSTANTIATE_TEST_SUITE_P(Both, FailingExportTest, testing::ValuesIn(offscreenClasses()), nameOf);

}  // namespace
}  // namespace zyn::test
