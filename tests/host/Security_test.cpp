// What the DLLs offer to an attacker: how they are linked, what they load, which files they write.
#include <algorithm>
#include <set>

#include "support/FailingImport_win.h"
#include "support/Scene_win.h"
#include "support/ServerModule_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

constexpr const wchar_t* kModules[] = {L"ZYNVue.dll", L"ZYNModeleGeom.dll"};

class ModuleTest : public HostTest, public testing::WithParamInterface<const wchar_t*> {
 protected:
  const IMAGE_NT_HEADERS64& headers() const {
    const auto* base = reinterpret_cast<const std::uint8_t*>(module_.handle());
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    return *reinterpret_cast<const IMAGE_NT_HEADERS64*>(base + dos->e_lfanew);
  }

  ServerModule module_{GetParam()};
};

TEST_P(ModuleTest, MayBeLoadedAnywhereAndRunsNoData) {
  const WORD flags = headers().OptionalHeader.DllCharacteristics;
  EXPECT_TRUE(flags & IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE);
  EXPECT_TRUE(flags & IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA);
  EXPECT_TRUE(flags & IMAGE_DLLCHARACTERISTICS_NX_COMPAT);
  EXPECT_FALSE(headers().FileHeader.Characteristics & IMAGE_FILE_RELOCS_STRIPPED);
  EXPECT_NE(headers().OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_BASERELOC].Size, 0U);
}

TEST_P(ModuleTest, HasNoSectionThatIsBothWrittenAndRun) {
  const IMAGE_SECTION_HEADER* section = IMAGE_FIRST_SECTION(&headers());
  for (WORD i = 0; i < headers().FileHeader.NumberOfSections; ++i, ++section) {
    const DWORD both = IMAGE_SCN_MEM_WRITE | IMAGE_SCN_MEM_EXECUTE;
    EXPECT_NE(section->Characteristics & both, both) << section->Name;
  }
}

TEST_P(ModuleTest, NeedsOnlyLibrariesOfTheSystemAndNoneOfTheNetwork) {
  const std::set<std::string> allowed = {"advapi32.dll", "gdi32.dll",    "glu32.dll",
                                         "kernel32.dll", "msvcrt.dll",   "ole32.dll",
                                         "oleaut32.dll", "opengl32.dll", "user32.dll"};
  for (const Import& import : importsOf(module_.handle())) {
    EXPECT_TRUE(allowed.contains(import.library)) << import.library << ' ' << import.function;
  }
  EXPECT_EQ(headers().OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_DELAY_IMPORT].Size, 0U);
}

TEST_P(ModuleTest, StartsNoProgramAndReadsNoClipboard) {
  for (const Import& import : importsOf(module_.handle())) {
    for (const char* word : {"CreateProcess", "ShellExecute", "WinExec", "GetClipboard", "Socket",
                             "GetTempPath", "GetTempFileName", "CreateRemoteThread"}) {
      EXPECT_EQ(import.function.find(word), std::string::npos) << import.function;
    }
  }
}

std::string nameOfModule(const testing::TestParamInfo<const wchar_t*>& chosen) {
  return chosen.index == 0 ? "ZYNVue" : "ZYNModeleGeom";
}

INSTANTIATE_TEST_SUITE_P(Both, ModuleTest, testing::ValuesIn(kModules), nameOfModule);

struct Load {
  std::wstring name;
  DWORD flags;
};
std::vector<Load> loads;
std::set<std::wstring> createdFiles;

HMODULE WINAPI recordLoad(LPCWSTR name, HANDLE file, DWORD flags) {
  loads.push_back({name, flags});
  return LoadLibraryExW(name, file, flags);
}

HANDLE WINAPI recordFile(LPCWSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security,
                         DWORD disposition, DWORD flags, HANDLE like) {
  createdFiles.insert(name);
  return CreateFileW(name, access, share, security, disposition, flags, like);
}

template <class Function>
const void* address(Function* function) {
  return reinterpret_cast<const void*>(function);
}

void exportEverything(OffscreenContext& context) {
  context.CreateBitmap(bstr(context.folder().file(L"a.bmp")));
  context.exportPng(context.folder().file(L"a.png"));
  context.exportGif(context.folder().file(L"a.gif"));
  context.exportJpg(context.folder().file(L"a.jpg"), 50);
}

class BehaviourTest : public HostTest {
 protected:
  BehaviourTest() {
    loads.clear();
    createdFiles.clear();
  }
  View3DHost view_{SIZE{20, 20}};
  HMODULE library_ = GetModuleHandleW(L"ZYNVue.dll");
};

TEST_F(BehaviourTest, LoadsLibrariesFromTheSystemsFolderOnly) {
  const ImportPatch extended(library_, "LoadLibraryExW", address(&recordLoad));
  const FailingImport plain(library_, "LoadLibraryW", {}, 1, 0);
  const FailingImport dialogs(library_, "DialogBoxParamW");
  view_->EditAmbiantLight();
  for (const OffscreenClass& each : offscreenClasses()) exportEverything(*each.make(8, 8));
  const auto text = createObject<IZYNGLTexte2>(kTextProgId);
  text->put_Texte(_bstr_t(L"\x394"));
  text->put_Unicode(VARIANT_TRUE);
  ComPtr<IDispatch> rectangle;
  text->GetPixelRect(&rectangle);
  EXPECT_EQ(plain.calls().made, 0U);
  for (const wchar_t* late : {L"comctl32.dll", L"usp10.dll"}) {
    EXPECT_TRUE(std::ranges::any_of(loads, [&](const Load& load) { return load.name == late; }));
  }
  for (const Load& load : loads) {
    EXPECT_EQ(load.flags, DWORD{LOAD_LIBRARY_SEARCH_SYSTEM32});
    EXPECT_EQ(load.name.find_first_of(L"\\/"), std::wstring::npos);
  }
}

TEST_F(BehaviourTest, WritesNoFileThatTheCallerDidNotName) {
  const ImportPatch files(library_, "CreateFileW", address(&recordFile));
  for (const OffscreenClass& each : offscreenClasses()) {
    const auto context = each.make(8, 8);
    exportEverything(*context);
    for (const std::wstring& file : createdFiles) {
      EXPECT_EQ(std::filesystem::path(file).parent_path(), context->folder().path());
    }
    EXPECT_FALSE(createdFiles.empty());
    createdFiles.clear();
  }
}

TEST_F(BehaviourTest, IsNotMarkedSafeForScripting) {
  ComPtr<IUnknown> safety;
  const IID objectSafety = {
      0xCB5BDC81, 0x93C1, 0x11CF, {0x8F, 0x20, 0x00, 0x80, 0x5F, 0x2C, 0xD0, 0x64}};
  EXPECT_EQ(view_->QueryInterface(objectSafety, reinterpret_cast<void**>(safety.GetAddressOf())),
            E_NOINTERFACE);
}

}  // namespace
}  // namespace zyn::test
