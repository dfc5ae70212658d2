// What registration leaves in the registry, for the machine and for the user, and that taking it
// away leaves nothing but what was there before. Works on keys of its own.
#include "support/RegisteredClasses_win.h"
#include "support/RegistryTree_win.h"
#include "support/ServerModule_win.h"
#include "support/TempFolder_win.h"

namespace zyn::test {
namespace {

struct ExpectedClass {
  const CLSID* id;
  std::wstring name;
  int toolboxBitmap;  ///< 0 for a class that is no control
};

const ExpectedClass kClasses[] = {
    {&CLSID_ZYNVue2D, L"ZYNVue2D", 102},
    {&CLSID_ZYNVue3D, L"ZYNVue3D", 106},
    {&CLSID_ZYNGLTriangle, L"ZYNGLTriangle", 0},
    {&CLSID_ZYNGLTexte, L"ZYNGLTexte", 0},
    {&CLSID_ZYNGLBitmap, L"ZYNGLBitmap", 0},
    {&CLSID_ZYN2DGLBitmapContext, L"ZYN2DGLBitmapContext", 0},
    {&CLSID_ZYN3dGLBitmapContext, L"ZYN3dGLBitmapContext", 0},
    {&CLSID_ZYNVue2DChild, L"ZYNVue2DChild", 0},
    {&CLSID_ZYNGLCote, L"ZYNGLCote", 0},
    {&CLSID_ZYNEchelleCouleurs, L"ZYNEchelleCouleurs", 0},
    {&CLSID_ZYNGroupe, L"ZYNGroupe", 0},
    {&CLSID_ZYNGLMaillage, L"ZYNGLMaillage", 0},
    {&CLSID_ZYNGLTrajet, L"ZYNGLTrajet", 0},
    {&CLSID_ZYNOutil, L"ZYNOutil", 0},
    {&CLSID_ZYNCamera, L"ZYNCamera", 0},
    {&CLSID_ZYNSerie, L"ZYNSerie", 0},
    {&CLSID_ZYNCarte, L"ZYNCarte", 0},
    {&CLSID_ZYNEvenements, L"ZYNEvenements", 0},
};

const std::pair<IID, std::wstring> kInterfaces[] = {
    {__uuidof(IZYNVue2D), L"IZYNVue2D"},
    {__uuidof(IZYNVue3D), L"IZYNVue3D"},
    {__uuidof(_IZYNVue2DEvents), L"_IZYNVue2DEvents"},
    {__uuidof(_IZYNVue3DEvents), L"_IZYNVue3DEvents"},
    {__uuidof(IZYNGLTriangle), L"IZYNGLTriangle"},
    {__uuidof(IZYNGLTexte), L"IZYNGLTexte"},
    {__uuidof(IZYNGLBitmap), L"IZYNGLBitmap"},
    {__uuidof(IZYN2DGLBitmapContext), L"IZYN2DGLBitmapContext"},
    {__uuidof(IZYN3DGLBitmapContext), L"IZYN3DGLBitmapContext"},
    {__uuidof(IZYNVue2DChild), L"IZYNVue2DChild"},
    {__uuidof(IZYNGLCote), L"IZYNGLCote"},
    {__uuidof(IZYNEchelleCouleurs), L"IZYNEchelleCouleurs"},
    {__uuidof(IZYNGroupe), L"IZYNGroupe"},
    {__uuidof(IZYNGLMaillage), L"IZYNGLMaillage"},
    {__uuidof(IZYNGLTrajet), L"IZYNGLTrajet"},
    {__uuidof(IZYNOutil), L"IZYNOutil"},
    {__uuidof(IZYNCamera), L"IZYNCamera"},
    {__uuidof(IZYNGraphe), L"IZYNGraphe"},
    {__uuidof(IZYNAxe), L"IZYNAxe"},
    {__uuidof(IZYNLegende), L"IZYNLegende"},
    {__uuidof(IZYNCurseurs), L"IZYNCurseurs"},
    {__uuidof(IZYNSerie), L"IZYNSerie"},
    {__uuidof(IZYNCarte), L"IZYNCarte"},
    {__uuidof(IZYNEvenements), L"IZYNEvenements"},
    {__uuidof(_IZYNEvenements), L"_IZYNEvenements"},
};

constexpr const wchar_t* kDefault = L"(default)";
const std::wstring kLibrary = L"{CD0942D5-F9A2-4059-91F4-DE4DDEF9EE0D}";

void addKey(RegistryTree& tree, const std::wstring& path) { tree[path + L"\\"]; }

void addText(RegistryTree& tree, const std::wstring& path, const std::wstring& text) {
  addKey(tree, path);
  tree[path + L"\\" + kDefault] = text;
}

void addControl(RegistryTree& tree, const std::wstring& key, const std::wstring& bitmap) {
  addKey(tree, key + L"\\Control");
  addKey(tree, key + L"\\Insertable");
  addText(tree, key + L"\\ToolboxBitmap32", bitmap);
  addText(tree, key + L"\\MiscStatus", L"0");
  addText(tree, key + L"\\MiscStatus\\1", L"131473");
  addText(tree, key + L"\\Version", L"1.0");
}

void addClass(RegistryTree& tree, const ExpectedClass& expected, const std::wstring& module) {
  const std::wstring progId = L"ZYNVue." + expected.name;
  const std::wstring text = expected.name + L" Class";
  const std::wstring id = guidText(*expected.id);
  addText(tree, progId + L".1", text);
  addText(tree, progId + L".1\\CLSID", id);
  addText(tree, progId, text);
  addText(tree, progId + L"\\CLSID", id);
  addText(tree, progId + L"\\CurVer", progId + L".1");
  const std::wstring key = L"CLSID\\" + id;
  addText(tree, key, text);
  addText(tree, key + L"\\ProgID", progId + L".1");
  addText(tree, key + L"\\VersionIndependentProgID", progId);
  addKey(tree, key + L"\\Programmable");
  addText(tree, key + L"\\InprocServer32", module);
  tree[key + L"\\InprocServer32\\ThreadingModel"] = L"Apartment";
  addText(tree, key + L"\\TypeLib", kLibrary);
  if (expected.toolboxBitmap != 0) {
    addControl(tree, key, module + L", " + std::to_wstring(expected.toolboxBitmap));
  }
}

RegistryTree expectedClasses(const std::wstring& module) {
  RegistryTree tree;
  addKey(tree, L"CLSID");
  for (const ExpectedClass& expected : kClasses) addClass(tree, expected, module);
  return tree;
}

/// Whether the path leads into the part that the system writes for a type library.
bool isOfTypeLibrary(const std::wstring& path) {
  return _wcsnicmp(path.c_str(), L"TypeLib\\", 8) == 0 || path.starts_with(L"Interface\\");
}

RegistryTree withoutTypeLibrary(RegistryTree tree) {
  std::erase_if(tree, [](const auto& entry) { return isOfTypeLibrary(entry.first); });
  return tree;
}

/// The text of a value in the tree, whatever the spelling of its path.
std::wstring textAt(const RegistryTree& tree, const std::wstring& path) {
  for (const auto& [key, text] : tree) {
    if (_wcsicmp(key.c_str(), path.c_str()) == 0) return text;
  }
  return L"(absent)";
}

void expectTypeLibrary(const RegistryTree& tree, const std::wstring& module) {
  const std::wstring version = L"TypeLib\\" + kLibrary + L"\\1.0\\";
  EXPECT_EQ(textAt(tree, version + kDefault), L"ZYNVue 1.0 Type Library");
  EXPECT_EQ(textAt(tree, version + L"0\\win64\\" + kDefault), module);
  for (const auto& [iid, name] : kInterfaces) {
    const std::wstring key = L"Interface\\" + guidText(iid) + L"\\";
    EXPECT_EQ(textAt(tree, key + kDefault), name);
    EXPECT_EQ(textAt(tree, key + L"TypeLib\\" + kDefault), kLibrary);
  }
}

/// What is left of the shared keys.
const RegistryTree kSharedKeys = {{L"CLSID\\", L""}, {L"Interface\\", L""}, {L"TypeLib\\", L""}};

RegistryTree inOneSpelling(const RegistryTree& tree) {
  RegistryTree result;
  for (const auto& [path, text] : tree) {
    result[_wcsnicmp(path.c_str(), L"TypeLib\\", 8) == 0 ? L"TypeLib\\" + path.substr(8) : path] =
        text;
  }
  return result;
}

class RegistrationTest : public HostTest {
 protected:
  /// Calls an entry point while HKEY_CLASSES_ROOT is our key.
  template <class Call>
  HRESULT redirected(Call call) {
    const RedirectedRoot root(HKEY_CLASSES_ROOT, classes_.get());
    return call();
  }
  HRESULT add() {
    return redirected([&] { return module_.registerServer(); });
  }
  HRESULT remove() {
    return redirected([&] { return module_.unregisterServer(); });
  }
  RegistryTree tree() { return inOneSpelling(readTree(classes_.get())); }

  ServerModule module_{L"ZYNVue.dll"};
  ScratchKey classes_;
};

TEST_F(RegistrationTest, WritesExactlyTheEntriesOfItsClasses) {
  ASSERT_EQ(add(), S_OK);
  EXPECT_EQ(withoutTypeLibrary(tree()), expectedClasses(module_.path()));
  expectTypeLibrary(tree(), module_.path());
}

TEST_F(RegistrationTest, TheContextOfTheThirdDimensionIsStoredWithALowerCaseD) {
  ASSERT_EQ(add(), S_OK);
  const RegistryTree written = tree();
  EXPECT_TRUE(written.contains(L"ZYNVue.ZYN3dGLBitmapContext.1\\"));
  EXPECT_FALSE(written.contains(L"ZYNVue.ZYN3DGLBitmapContext.1\\"));
}

TEST_F(RegistrationTest, RegisteringAgainChangesNothing) {
  ASSERT_EQ(add(), S_OK);
  const RegistryTree once = tree();
  ASSERT_EQ(add(), S_OK);
  EXPECT_EQ(tree(), once);
}

TEST_F(RegistrationTest, IsUndoneDownToTheSharedKeys) {
  ASSERT_EQ(add(), S_OK);
  ASSERT_EQ(remove(), S_OK);
  EXPECT_EQ(tree(), kSharedKeys);
  EXPECT_EQ(remove(), S_OK) << "nothing to take away is no failure";
  EXPECT_EQ(tree(), kSharedKeys);
}

TEST_F(RegistrationTest, WhatOthersHaveWrittenStays) {
  writeText(classes_.get(), L"Other.Class", L"", L"theirs");
  writeText(classes_.get(), L"CLSID\\{00000000-0000-0000-0000-00000000AAAA}", L"", L"theirs");
  writeText(classes_.get(), L"CLSID", L"Note", L"theirs");
  const RegistryTree before = tree();
  ASSERT_EQ(add(), S_OK);
  ASSERT_EQ(remove(), S_OK);
  RegistryTree expected = before;
  expected.insert(kSharedKeys.begin(), kSharedKeys.end());
  EXPECT_EQ(tree(), expected);
}

TEST_F(RegistrationTest, ForeignValuesUnderAProgIdStayWithTheirKey) {
  writeText(classes_.get(), L"ZYNVue.ZYNVue3D", L"Note", L"theirs");
  writeText(classes_.get(), L"ZYNVue.ZYNGLCote\\DefaultIcon", L"", L"theirs");
  ASSERT_EQ(add(), S_OK);
  ASSERT_EQ(remove(), S_OK);
  RegistryTree expected = kSharedKeys;
  addKey(expected, L"ZYNVue.ZYNVue3D");
  expected[L"ZYNVue.ZYNVue3D\\Note"] = L"theirs";
  addKey(expected, L"ZYNVue.ZYNGLCote");
  addText(expected, L"ZYNVue.ZYNGLCote\\DefaultIcon", L"theirs");
  EXPECT_EQ(tree(), expected);
}

TEST_F(RegistrationTest, TheKeyOfAClassIsOursWithAllItHolds) {
  const std::wstring key = classKey(CLSID_ZYNGLTriangle);
  writeText(classes_.get(), key + L"\\InprocHandler32", L"", L"stale");
  ASSERT_EQ(add(), S_OK);
  EXPECT_EQ(withoutTypeLibrary(tree()), expectedClasses(module_.path()));
  writeText(classes_.get(), key + L"\\Implemented Categories\\x", L"", L"added later");
  ASSERT_EQ(remove(), S_OK);
  EXPECT_EQ(tree(), kSharedKeys);
}

TEST_F(RegistrationTest, TheFailureOfTheRegistryIsReturned) {
  ScratchKey gone;
  const RedirectedRoot root(HKEY_CLASSES_ROOT, gone.get());
  ASSERT_EQ(RegDeleteKeyW(gone.get(), L""), ERROR_SUCCESS);
  EXPECT_EQ(module_.registerServer(), HRESULT_FROM_WIN32(ERROR_KEY_DELETED));
  EXPECT_EQ(module_.unregisterServer(), HRESULT_FROM_WIN32(ERROR_KEY_DELETED));
}

TEST_F(RegistrationTest, ANameThatStandsForAnotherClassStays) {
  ASSERT_EQ(add(), S_OK);
  const std::wstring theirs = L"{00000000-0000-0000-0000-00000000AAAA}";
  writeText(classes_.get(), L"ZYNVue.ZYNVue3D\\CLSID", L"", theirs);
  ASSERT_EQ(remove(), S_OK);
  RegistryTree expected = kSharedKeys;
  addText(expected, L"ZYNVue.ZYNVue3D", L"ZYNVue3D Class");
  addText(expected, L"ZYNVue.ZYNVue3D\\CLSID", theirs);
  addText(expected, L"ZYNVue.ZYNVue3D\\CurVer", L"ZYNVue.ZYNVue3D.1");
  EXPECT_EQ(tree(), expected);
}

// For the user alone.

class UserRegistrationTest : public RegistrationTest {
 protected:
  HRESULT install(BOOL add, const wchar_t* commandLine) {
    const RedirectedRoot user(HKEY_CURRENT_USER, user_.get());
    return redirected([&] { return module_.install(add, commandLine); });
  }

  /// What has been written below the user's classes.
  RegistryTree userTree() {
    const std::wstring root = L"Software\\Classes\\";
    RegistryTree below;
    for (const auto& [path, text] : readTree(user_.get())) {
      if (path.starts_with(root) && path != root) below[path.substr(root.size())] = text;
    }
    return inOneSpelling(below);
  }

  ScratchKey user_;
};

TEST_F(UserRegistrationTest, WritesToTheUsersClassesOnly) {
  ASSERT_EQ(install(TRUE, L"user"), S_OK);
  EXPECT_EQ(withoutTypeLibrary(userTree()), expectedClasses(module_.path()));
  expectTypeLibrary(userTree(), module_.path());
  EXPECT_EQ(tree(), RegistryTree());
}

TEST_F(UserRegistrationTest, IsUndoneDownToTheSharedKeys) {
  writeText(user_.get(), L"Software\\Classes\\ZYNVue.ZYNVue2D", L"Note", L"theirs");
  ASSERT_EQ(install(TRUE, L"USER"), S_OK);
  ASSERT_EQ(install(FALSE, L"User"), S_OK);
  RegistryTree expected = kSharedKeys;
  addKey(expected, L"ZYNVue.ZYNVue2D");
  expected[L"ZYNVue.ZYNVue2D\\Note"] = L"theirs";
  EXPECT_EQ(userTree(), expected);
}

TEST_F(UserRegistrationTest, WithoutCommandLineItIsForTheMachine) {
  for (const wchar_t* commandLine : {L"", static_cast<const wchar_t*>(nullptr)}) {
    ASSERT_EQ(install(TRUE, commandLine), S_OK);
    EXPECT_EQ(withoutTypeLibrary(tree()), expectedClasses(module_.path()));
    ASSERT_EQ(install(FALSE, commandLine), S_OK);
    EXPECT_EQ(tree(), kSharedKeys);
  }
  EXPECT_EQ(userTree(), RegistryTree());
}

TEST_F(UserRegistrationTest, OtherCommandLinesAreRefused) {
  EXPECT_EQ(install(TRUE, L"users"), E_INVALIDARG);
  EXPECT_EQ(tree(), RegistryTree());
  EXPECT_EQ(userTree(), RegistryTree());
}

// Two copies of a library.

struct Copied {
  const wchar_t* file;
  const wchar_t* commandLine;
};

class CopiesRegistrationTest : public HostTest, public testing::WithParamInterface<Copied> {
 protected:
  CopiesRegistrationTest() {
    for (const wchar_t* file : {L"ZYNVue.dll", L"ZYNModeleGeom.dll"}) {
      const auto source = std::filesystem::path(old_.path()).replace_filename(file);
      std::filesystem::copy_file(source, folder_.file(file),
                                 std::filesystem::copy_options::overwrite_existing);
    }
  }

  HRESULT install(const ServerModule& module, BOOL add) {
    const RedirectedRoot user(HKEY_CURRENT_USER, user_.get());
    const RedirectedRoot root(HKEY_CLASSES_ROOT, classes_.get());
    return module.install(add, GetParam().commandLine);
  }
  RegistryTree tree() {
    RegistryTree all = readTree(classes_.get());
    all.merge(readTree(user_.get()));
    return all;
  }

  TempFolder folder_;
  ServerModule old_{GetParam().file};
  ScratchKey classes_;
  ScratchKey user_;
};

TEST_P(CopiesRegistrationTest, TakingAwayTheOldOneLeavesTheNewOne) {
  const ServerModule newer(folder_.file(GetParam().file).c_str());
  ASSERT_EQ(install(old_, FALSE), S_OK);
  const RegistryTree none = tree();
  ASSERT_EQ(install(old_, TRUE), S_OK);
  ASSERT_EQ(install(newer, TRUE), S_OK);
  const RegistryTree registered = tree();
  EXPECT_EQ(install(old_, FALSE), S_OK);
  EXPECT_TRUE(tree() == registered);
  EXPECT_EQ(install(newer, FALSE), S_OK);
  for (const auto& [path, text] : tree()) {
    EXPECT_TRUE(none.contains(path) || text.empty()) << path;
  }
}

INSTANTIATE_TEST_SUITE_P(Libraries, CopiesRegistrationTest,
                         testing::Values(Copied{L"ZYNVue.dll", L""}, Copied{L"ZYNVue.dll", L"user"},
                                         Copied{L"ZYNModeleGeom.dll", L""},
                                         Copied{L"ZYNModeleGeom.dll", L"user"}),
                         [](const auto& chosen) {
                           return std::string(chosen.index < 2 ? "ZYNVue" : "ZYNModeleGeom") +
                                  (*chosen.param.commandLine ? "ForTheUser" : "");
                         });

}  // namespace
}  // namespace zyn::test
