// Both type libraries as tools and script engines read them, from the registry and from the DLLs
// themselves.
#include <algorithm>
#include <cctype>
#include <set>

#include "support/PublishedMembers.h"
#include "support/RegisteredClasses_win.h"
#include "support/TypeReader_win.h"

namespace zyn::test {
namespace {

using Lines = std::vector<std::string>;

/// What one type library must contain.
struct Expected {
  GUID id;
  CLSID someClass;
  std::string name;
  std::string help;
  std::vector<PublishedMembers> interfaces;
  std::map<std::string, GUID> interfaceIds;
  std::map<std::string, GUID> classIds;
  std::map<std::string, Lines> classes;
};

Expected expectZYNVue() {
  return {LIBID_ZYNVUELib,
          CLSID_ZYNVue2D,
          "ZYNVUELib",
          "ZYNVue 1.0 Type Library",
          publishedByZYNVue(),
          {{"IZYNVue3D", __uuidof(IZYNVue3D)},
           {"IZYNVue2D", __uuidof(IZYNVue2D)},
           {"IZYNVue2DChild", __uuidof(IZYNVue2DChild)},
           {"IZYNGLTriangle", __uuidof(IZYNGLTriangle)},
           {"IZYNGLTexte", __uuidof(IZYNGLTexte)},
           {"IZYNGLTexte2", __uuidof(IZYNGLTexte2)},
           {"IZYNGLBitmap", __uuidof(IZYNGLBitmap)},
           {"IZYNGLCote", __uuidof(IZYNGLCote)},
           {"IZYNEchelleCouleurs", __uuidof(IZYNEchelleCouleurs)},
           {"IZYNGroupe", __uuidof(IZYNGroupe)},
           {"IZYNGLMaillage", __uuidof(IZYNGLMaillage)},
           {"IZYNOutil", __uuidof(IZYNOutil)},
           {"IZYNGLTrajet", __uuidof(IZYNGLTrajet)},
           {"IZYNCamera", __uuidof(IZYNCamera)},
           {"IZYNGraphe", __uuidof(IZYNGraphe)},
           {"IZYNAxe", __uuidof(IZYNAxe)},
           {"IZYNLegende", __uuidof(IZYNLegende)},
           {"IZYNCurseurs", __uuidof(IZYNCurseurs)},
           {"IZYNSerie", __uuidof(IZYNSerie)},
           {"IZYNCarte", __uuidof(IZYNCarte)},
           {"IZYNEvenements", __uuidof(IZYNEvenements)},
           {"_IZYNEvenements", __uuidof(_IZYNEvenements)},
           {"IZYN2DGLBitmapContext", __uuidof(IZYN2DGLBitmapContext)},
           {"IZYN3DGLBitmapContext", __uuidof(IZYN3DGLBitmapContext)},
           {"IZYNVue3D2", __uuidof(IZYNVue3D2)},
           {"IZYNVue2D2", __uuidof(IZYNVue2D2)},
           {"IZYN2DGLBitmapContext2", __uuidof(IZYN2DGLBitmapContext2)},
           {"IZYN3DGLBitmapContext2", __uuidof(IZYN3DGLBitmapContext2)},
           {"_IZYNVue3DEvents", __uuidof(_IZYNVue3DEvents)},
           {"_IZYNVue2DEvents", __uuidof(_IZYNVue2DEvents)}},
          {{"ZYNVue2D", __uuidof(ZYNVue2D)},
           {"ZYNVue3D", __uuidof(ZYNVue3D)},
           {"ZYNGLTriangle", __uuidof(ZYNGLTriangle)},
           {"ZYNGLTexte", __uuidof(ZYNGLTexte)},
           {"ZYNGLBitmap", __uuidof(ZYNGLBitmap)},
           {"ZYN2DGLBitmapContext", __uuidof(ZYN2DGLBitmapContext)},
           {"ZYN3dGLBitmapContext", __uuidof(ZYN3dGLBitmapContext)},
           {"ZYNVue2DChild", __uuidof(ZYNVue2DChild)},
           {"ZYNGLCote", __uuidof(ZYNGLCote)},
           {"ZYNEchelleCouleurs", __uuidof(ZYNEchelleCouleurs)},
           {"ZYNGroupe", __uuidof(ZYNGroupe)},
           {"ZYNGLMaillage", __uuidof(ZYNGLMaillage)},
           {"ZYNGLTrajet", __uuidof(ZYNGLTrajet)},
           {"ZYNOutil", __uuidof(ZYNOutil)},
           {"ZYNCamera", __uuidof(ZYNCamera)},
           {"ZYNSerie", __uuidof(ZYNSerie)},
           {"ZYNCarte", __uuidof(ZYNCarte)},
           {"ZYNEvenements", __uuidof(ZYNEvenements)}},
          {{"ZYNVue2D", {"default IZYNVue2D", "IZYNVue2D2", "default source _IZYNVue2DEvents"}},
           {"ZYNVue3D", {"default IZYNVue3D", "IZYNVue3D2", "default source _IZYNVue3DEvents"}},
           {"ZYNGLTriangle", {"default IZYNGLTriangle"}},
           {"ZYNGLTexte", {"default IZYNGLTexte", "IZYNGLTexte2"}},
           {"ZYNGLBitmap", {"default IZYNGLBitmap"}},
           {"ZYN2DGLBitmapContext", {"default IZYN2DGLBitmapContext", "IZYN2DGLBitmapContext2"}},
           {"ZYN3dGLBitmapContext", {"default IZYN3DGLBitmapContext", "IZYN3DGLBitmapContext2"}},
           {"ZYNVue2DChild", {"default IZYNVue2DChild"}},
           {"ZYNGLCote", {"default IZYNGLCote"}},
           {"ZYNEchelleCouleurs", {"default IZYNEchelleCouleurs"}},
           {"ZYNGroupe", {"default IZYNGroupe"}},
           {"ZYNGLMaillage", {"default IZYNGLMaillage"}},
           {"ZYNGLTrajet", {"default IZYNGLTrajet"}},
           {"ZYNOutil", {"default IZYNOutil"}},
           {"ZYNCamera", {"default IZYNCamera"}},
           {"ZYNSerie", {"default IZYNSerie"}},
           {"ZYNCarte", {"default IZYNCarte"}},
           {"ZYNEvenements", {"default IZYNEvenements", "default source _IZYNEvenements"}}}};
}

Expected expectZYNModeleGeom() {
  return {LIBID_ZYNMODELEGEOMLib,
          CLSID_RectangleGeom,
          "ZYNMODELEGEOMLib",
          "ZYNModeleGeom 1.0 Type Library",
          publishedByZYNModeleGeom(),
          {{"IZYNRectangle", __uuidof(IZYNRectangle)},
           {"IZYNBox2D", __uuidof(IZYNBox2D)},
           {"IZYNBox3D", __uuidof(IZYNBox3D)},
           {"IZYNPoint", __uuidof(IZYNPoint)},
           {"IZYNCouleur", __uuidof(IZYNCouleur)},
           {"IZYNPolyligne", __uuidof(IZYNPolyligne)},
           {"IZYNProfil", __uuidof(IZYNProfil)},
           {"IZYNAttribuable", __uuidof(IZYNAttribuable)},
           {"IZYNAttribut", __uuidof(IZYNAttribut)},
           {"IZYNObjet", __uuidof(IZYNObjet)},
           {"IGLDraw", __uuidof(IGLDraw)}},
          {{"RectangleGeom", __uuidof(RectangleGeom)},
           {"Box2DGeom", __uuidof(Box2DGeom)},
           {"Box3DGeom", __uuidof(Box3DGeom)},
           {"PointGeom", __uuidof(PointGeom)},
           {"CouleurGeom", __uuidof(CouleurGeom)},
           {"PolyligneGeom", __uuidof(PolyligneGeom)}},
          {{"RectangleGeom", {"default IZYNRectangle"}},
           {"Box2DGeom", {"default IZYNBox2D"}},
           {"Box3DGeom", {"default IZYNBox3D"}},
           {"PointGeom", {"default IZYNPoint"}},
           {"CouleurGeom", {"default IZYNCouleur"}},
           {"PolyligneGeom",
            {"default IZYNPolyligne", "IZYNProfil", "IZYNAttribuable", "IZYNObjet", "IGLDraw"}}}};
}

enum class Library { kZYNVue, kZYNModeleGeom };
enum class Source { kRegistered, kResource };

class TypeLibraryTest : public HostTest,
                        public testing::WithParamInterface<std::tuple<Library, Source>> {
 protected:
  void SetUp() override {
    const auto [library, source] = GetParam();
    expected_ = library == Library::kZYNVue ? expectZYNVue() : expectZYNModeleGeom();
    if (source == Source::kRegistered) {
      require(LoadRegTypeLib(expected_.id, 1, 0, 0, &library_), "LoadRegTypeLib");
    } else {
      const std::wstring module = moduleOf(expected_.someClass) + L"\\1";
      require(LoadTypeLibEx(module.c_str(), REGKIND_NONE, &library_), "LoadTypeLibEx");
    }
    types_ = typesOf(library_.Get());
  }

  ITypeInfo* type(const std::string& name) {
    const auto found = types_.find(name);
    if (found == types_.end()) throw std::runtime_error(name + " is missing");
    return found->second.Get();
  }

  Expected expected_;
  ComPtr<ITypeLib> library_;
  std::map<std::string, ComPtr<ITypeInfo>> types_;
};

TEST_P(TypeLibraryTest, IsTheLibraryOfTheHeader) {
  TLIBATTR* attributes = nullptr;
  ASSERT_EQ(library_->GetLibAttr(&attributes), S_OK);
  EXPECT_EQ(guidText(attributes->guid), guidText(expected_.id));
  EXPECT_EQ(attributes->wMajorVerNum, 1);
  EXPECT_EQ(attributes->wMinorVerNum, 0);
  EXPECT_EQ(attributes->syskind, SYS_WIN64);
  library_->ReleaseTLibAttr(attributes);

  _bstr_t name;
  _bstr_t help;
  ASSERT_EQ(library_->GetDocumentation(-1, name.GetAddress(), help.GetAddress(), nullptr, nullptr),
            S_OK);
  EXPECT_EQ(narrow(name), expected_.name);
  EXPECT_EQ(narrow(help), expected_.help);
}

TEST_P(TypeLibraryTest, HoldsEveryMemberAndNoOther) {
  for (const PublishedMembers& published : expected_.interfaces) {
    SCOPED_TRACE(published.name());
    Lines found = memberLines(vtableForm(type(published.name())).Get());
    Lines wanted = published.lines();
    EXPECT_EQ(found.size(), published.count());
    std::sort(found.begin(), found.end());
    std::sort(wanted.begin(), wanted.end());
    EXPECT_EQ(found, wanted);
  }
}

TEST_P(TypeLibraryTest, NoMemberRepeatsADispid) {
  for (const PublishedMembers& published : expected_.interfaces) {
    SCOPED_TRACE(published.name());
    ITypeInfo* const members = type(published.name());
    const TypeAttributes attributes(members);
    std::set<std::pair<MEMBERID, INVOKEKIND>> ids;
    std::map<MEMBERID, std::string> names;
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
      const FunctionDescription function(members, i);
      _bstr_t name;
      UINT count = 0;
      ASSERT_EQ(members->GetNames(function->memid, name.GetAddress(), 1, &count), S_OK);
      EXPECT_TRUE(ids.emplace(function->memid, function->invkind).second) << function->memid;
      const auto known = names.emplace(function->memid, narrow(name)).first;
      EXPECT_EQ(known->second, narrow(name));
    }
  }
}

TEST_P(TypeLibraryTest, EveryMemberReturnsWhatItsKindOfInterfaceReturns) {
  for (const PublishedMembers& published : expected_.interfaces) {
    SCOPED_TRACE(published.name());
    const ComPtr<ITypeInfo> form = vtableForm(type(published.name()));
    const TypeAttributes attributes(form.Get());
    const VARTYPE wanted = attributes->typekind == TKIND_DISPATCH ? VT_VOID : VT_HRESULT;
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
      const FunctionDescription function(form.Get(), i);
      EXPECT_EQ(function->elemdescFunc.tdesc.vt, wanted) << "member " << function->memid;
    }
  }
}

TEST_P(TypeLibraryTest, EverythingHasAHelpString) {
  for (const auto& [name, typeInfo] : types_) {
    EXPECT_NE(helpOf(typeInfo.Get(), MEMBERID_NIL), "") << name;
    const ComPtr<ITypeInfo> form = vtableForm(typeInfo.Get());
    const TypeAttributes attributes(form.Get());
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
      const FunctionDescription function(form.Get(), i);
      EXPECT_NE(helpOf(form.Get(), function->memid), "") << name << " member " << function->memid;
    }
  }
}

void expectNoHelpContext(ITypeInfo* type, MEMBERID member) {
  DWORD context = 0;
  _bstr_t name;
  _bstr_t file;
  ASSERT_EQ(type->GetDocumentation(member, name.GetAddress(), nullptr, &context, file.GetAddress()),
            S_OK);
  EXPECT_EQ(context, 0u) << narrow(name);
  EXPECT_EQ(file.length(), 0u) << narrow(name);
}

TEST_P(TypeLibraryTest, NothingRefersToHelpFiles) {
  for (const auto& [name, typeInfo] : types_) {
    expectNoHelpContext(typeInfo.Get(), MEMBERID_NIL);
    const ComPtr<ITypeInfo> form = vtableForm(typeInfo.Get());
    const TypeAttributes attributes(form.Get());
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
      expectNoHelpContext(form.Get(), FunctionDescription(form.Get(), i)->memid);
    }
  }
}

/// Types of arguments that every automation client, .NET's importer included, marshals by itself.
bool isAutomationType(ITypeInfo* type, const TYPEDESC& description, int pointers = 0) {
  switch (description.vt) {
    case VT_I2:
    case VT_I4:
    case VT_INT:
    case VT_R4:
    case VT_R8:
    case VT_BOOL:
    case VT_BSTR:
    case VT_VARIANT:
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return pointers <= 1;
    case VT_PTR:
      return isAutomationType(type, *description.lptdesc, pointers + 1);
    case VT_USERDEFINED: {
      ComPtr<ITypeInfo> referred;
      require(type->GetRefTypeInfo(description.hreftype, &referred), "GetRefTypeInfo");
      const TypeAttributes attributes(referred.Get());
      if (attributes->typekind == TKIND_ENUM) return pointers <= 1;
      if (attributes->typekind == TKIND_ALIAS) {
        return isAutomationType(referred.Get(), attributes->tdescAlias, pointers);
      }
      return attributes->typekind == TKIND_DISPATCH && (pointers == 1 || pointers == 2);
    }
    default:
      return false;
  }
}

TEST_P(TypeLibraryTest, ArgumentsAreOfAutomationTypes) {
  for (const auto& [name, typeInfo] : types_) {
    const ComPtr<ITypeInfo> form = vtableForm(typeInfo.Get());
    const TypeAttributes attributes(form.Get());
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
      const FunctionDescription function(form.Get(), i);
      SHORT optional = 0;
      for (SHORT k = 0; k < function->cParams; ++k) {
        const ELEMDESC& argument = function->lprgelemdescParam[k];
        if (argument.paramdesc.wParamFlags & PARAMFLAG_FOPT) {
          ++optional;
          EXPECT_EQ(argument.tdesc.vt, VT_VARIANT) << name << " member " << function->memid;
        }
        EXPECT_TRUE(isAutomationType(form.Get(), argument.tdesc))
            << name << " member " << function->memid << " argument " << k;
        EXPECT_TRUE(argument.paramdesc.wParamFlags & (PARAMFLAG_FIN | PARAMFLAG_FOUT))
            << name << " member " << function->memid << " argument " << k;
      }
      EXPECT_EQ(function->cParamsOpt, optional) << name << " member " << function->memid;
    }
  }
}

std::string lowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  return text;
}

/// The names of a type's own members, in small letters: Visual Basic tells no case.
std::multiset<std::string> memberNames(ITypeInfo* type) {
  const ComPtr<ITypeInfo> form = vtableForm(type);
  const TypeAttributes attributes(form.Get());
  std::set<MEMBERID> seen;
  std::multiset<std::string> names;
  for (UINT i = 0; i < attributes->cFuncs; ++i) {
    const MEMBERID id = FunctionDescription(form.Get(), i)->memid;
    _bstr_t name;
    UINT count = 0;
    require(form->GetNames(id, name.GetAddress(), 1, &count), "GetNames");
    if (seen.insert(id).second) names.insert(lowerCase(narrow(name)));
  }
  return names;
}

TEST_P(TypeLibraryTest, NamesDifferInMoreThanCase) {
  std::set<std::string> typeNames;
  for (const auto& [name, typeInfo] : types_) {
    EXPECT_TRUE(typeNames.insert(lowerCase(name)).second) << name;
    const auto names = memberNames(typeInfo.Get());
    for (const std::string& member : names) {
      EXPECT_EQ(names.count(member), 1u) << name << "." << member;
    }
  }
  // What .NET's importer makes of a class NAME.
  for (const auto& [name, lines] : expected_.classes) {
    EXPECT_FALSE(typeNames.contains(lowerCase(name) + "class")) << name;
  }
}

/// What every .NET and every COM object has already.
const std::set<std::string> kTakenNames = {
    "equals",         "finalize", "gethashcode", "gettype",     "tostring",      "memberwiseclone",
    "queryinterface", "addref",   "release",     "gettypeinfo", "getidsofnames", "invoke"};

TEST_P(TypeLibraryTest, MembersOfOneClassDoNotClash) {
  for (const auto& [name, lines] : expected_.classes) {
    std::set<std::string> taken = kTakenNames;
    std::set<std::string> clashes;
    for (const std::string& line : lines) {
      for (const std::string& member : memberNames(type(line.substr(line.rfind(' ') + 1)))) {
        if (!taken.insert(member).second) clashes.insert(member);
      }
    }
    // The event has the name of the switch in both views: docs/hosting-dotnet.md tells how .NET
    // reaches it.
    const bool isView = lines.back().starts_with("default source") && name.starts_with("ZYNVue");
    EXPECT_EQ(clashes, isView ? std::set<std::string>{"windowselection"} : std::set<std::string>{})
        << name;
  }
}

TEST_P(TypeLibraryTest, DualInterfacesAreClosedAutomationInterfaces) {
  for (const PublishedMembers& published : expected_.interfaces) {
    const TypeAttributes attributes(type(published.name()));
    EXPECT_EQ(attributes->typekind, TKIND_DISPATCH) << published.name();
    if (published.name().front() == '_') continue;
    EXPECT_TRUE(attributes->wTypeFlags & TYPEFLAG_FDUAL) << published.name();
    EXPECT_TRUE(attributes->wTypeFlags & TYPEFLAG_FNONEXTENSIBLE) << published.name();
  }
}

/// A further interface derives from the one that it adds to, whose name it has with a 2 behind.
IID baseOf(const std::string& name) {
  const std::map<std::string, GUID> published = expectZYNVue().interfaceIds;
  const auto first =
      name.ends_with("2") ? published.find(name.substr(0, name.size() - 1)) : published.end();
  if (first != published.end()) return first->second;
  return name == "IGLDraw" ? IID_IUnknown : IID_IDispatch;
}

TEST_P(TypeLibraryTest, InterfacesDeriveFromTheirBases) {
  for (const auto& [name, id] : expected_.interfaceIds) {
    const ComPtr<ITypeInfo> form = vtableForm(type(name));
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> base;
    ASSERT_EQ(form->GetRefTypeOfImplType(0, &reference), S_OK) << name;
    ASSERT_EQ(form->GetRefTypeInfo(reference, &base), S_OK) << name;
    const TypeAttributes attributes(base.Get());
    EXPECT_EQ(guidText(attributes->guid), guidText(baseOf(name))) << name;
  }
}

TEST_P(TypeLibraryTest, IdentifiersAreThoseOfTheHeader) {
  for (const auto& [name, id] : expected_.interfaceIds) {
    EXPECT_EQ(guidText(TypeAttributes(type(name))->guid), guidText(id)) << name;
  }
  for (const auto& [name, id] : expected_.classIds) {
    EXPECT_EQ(guidText(TypeAttributes(type(name))->guid), guidText(id)) << name;
  }
}

TEST_P(TypeLibraryTest, HoldsEveryClassAndNoOther) {
  std::map<std::string, Lines> found;
  for (const auto& [name, typeInfo] : types_) {
    const TypeAttributes attributes(typeInfo.Get());
    if (attributes->typekind != TKIND_COCLASS) continue;
    found[name] = interfaceLines(typeInfo.Get());
    EXPECT_TRUE(attributes->wTypeFlags & TYPEFLAG_FCANCREATE) << name;
    const bool isControl = name == "ZYNVue2D" || name == "ZYNVue3D";
    EXPECT_EQ((attributes->wTypeFlags & TYPEFLAG_FCONTROL) != 0, isControl) << name;
  }
  EXPECT_EQ(found, expected_.classes);
}

std::string variantName(const testing::TestParamInfo<std::tuple<Library, Source>>& variant) {
  const auto [library, source] = variant.param;
  return std::string(library == Library::kZYNVue ? "ZYNVue" : "ZYNModeleGeom") +
         (source == Source::kRegistered ? "Registered" : "Resource");
}

INSTANTIATE_TEST_SUITE_P(Published, TypeLibraryTest,
                         testing::Combine(testing::Values(Library::kZYNVue,
                                                          Library::kZYNModeleGeom),
                                          testing::Values(Source::kRegistered, Source::kResource)),
                         variantName);

class SingleTypeTest : public HostTest {
 protected:
  static std::map<std::string, ComPtr<ITypeInfo>> registered(REFGUID id) {
    ComPtr<ITypeLib> library;
    require(LoadRegTypeLib(id, 1, 0, 0, &library), "LoadRegTypeLib");
    return typesOf(library.Get());
  }
};

TEST_F(SingleTypeTest, FontSizeUnitsHaveTheirValues) {
  const auto types = registered(LIBID_ZYNVUELib);
  ITypeInfo* const units = types.at("FontSizeUnit_e").Get();
  const TypeAttributes attributes(units);
  ASSERT_EQ(attributes->typekind, TKIND_ENUM);
  std::map<std::string, long> values;
  for (UINT i = 0; i < attributes->cVars; ++i) {
    VARDESC* value = nullptr;
    ASSERT_EQ(units->GetVarDesc(i, &value), S_OK);
    _bstr_t name;
    EXPECT_EQ(units->GetDocumentation(value->memid, name.GetAddress(), nullptr, nullptr, nullptr),
              S_OK);
    values[narrow(name)] = V_I4(value->lpvarValue);
    units->ReleaseVarDesc(value);
  }
  const std::map<std::string, long> wanted = {
      {"FontSizeUnit_PIXEL", 0}, {"FontSizeUnit_MM", 1},      {"FontSizeUnit_INCH", 2},
      {"FontSizeUnit_POINT", 3}, {"FontSizeUnit_MODELMM", 4}, {"FontSizeUnit_MODELINCH", 5},
      {"FontSizeUnit_MODEL", 6}};
  EXPECT_EQ(values, wanted);
}

TEST_F(SingleTypeTest, DrawingContractHasItsFiveMethodsInOrder) {
  const auto types = registered(LIBID_ZYNMODELEGEOMLib);
  ITypeInfo* const contract = types.at("IGLDraw").Get();
  const TypeAttributes attributes(contract);
  EXPECT_EQ(attributes->typekind, TKIND_INTERFACE);
  EXPECT_TRUE(attributes->wTypeFlags & TYPEFLAG_FOLEAUTOMATION);
  Lines lines = memberLines(contract);
  for (std::string& line : lines) line.erase(0, line.find(' ') + 1);
  EXPECT_EQ(lines,
            (Lines{"method Draw3D(int mode)", "method Draw2D(int mode)",
                   "method GetBox2D() -> IDispatch* box", "method GetBox3D() -> IDispatch* box",
                   "method GetParam(IDispatch* P) -> double value"}));
  for (UINT i = 0; i < lines.size(); ++i) {
    const FunctionDescription function(contract, i);
    EXPECT_EQ(function->oVft, static_cast<SHORT>((3 + i) * sizeof(void*)));
  }
}

}  // namespace
}  // namespace zyn::test
