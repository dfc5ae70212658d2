// The further interfaces of views, bitmap contexts and texts, beside the first ones on the same
// objects: by their own identifiers, and by name.
#include <map>
#include <string>

#include "support/LateBinding_win.h"
#include "support/PublishedMembers.h"
#include "support/TypeReader_win.h"

namespace zyn::test {
namespace {

struct FurtherInterface {
  const wchar_t* progId;
  std::string name;
  IID first;
  IID further;
  const wchar_t* aSwitch = L"Silencieux";
};

class FurtherInterfacesTest : public HostTest,
                              public testing::WithParamInterface<FurtherInterface> {
 protected:
  ComPtr<IDispatch> object_ = createObject<IDispatch>(GetParam().progId);
};

/// What an interface publishes, its own lines only.
std::vector<std::string> publishedLines(const std::string& name) {
  for (const PublishedMembers& members : publishedByZYNVue()) {
    if (members.name() == name) return members.lines();
  }
  throw std::runtime_error(name + " is not published");
}

TEST_P(FurtherInterfacesTest, IsTheSameObjectAsTheFirst) {
  ComPtr<IUnknown> first;
  ComPtr<IUnknown> further;
  ComPtr<IUnknown> dispatch;
  ASSERT_EQ(object_->QueryInterface(GetParam().first, &first), S_OK);
  ASSERT_EQ(object_->QueryInterface(GetParam().further, &further), S_OK);
  ASSERT_EQ(object_->QueryInterface(IID_IDispatch, &dispatch), S_OK);
  EXPECT_EQ(first.Get(), further.Get());
  EXPECT_EQ(dispatch.Get(), further.Get());
  ComPtr<ISupportErrorInfo> errors;
  ASSERT_EQ(object_->QueryInterface(IID_PPV_ARGS(&errors)), S_OK);
  EXPECT_EQ(errors->InterfaceSupportsErrorInfo(GetParam().first), S_OK);
  EXPECT_EQ(errors->InterfaceSupportsErrorInfo(GetParam().further), S_OK);
}

/// As tools that show the members of an object find them, without asking for bases.
TEST_P(FurtherInterfacesTest, TypeInformationHasTheMembersOfBoth) {
  ComPtr<ITypeInfo> info;
  ASSERT_EQ(object_->GetTypeInfo(0, LOCALE_NEUTRAL, &info), S_OK);
  const TypeAttributes attributes(info.Get());
  EXPECT_EQ(attributes->guid, GetParam().further);
  std::multimap<MEMBERID, INVOKEKIND> described;
  for (UINT i = 0; i < attributes->cFuncs; ++i) {
    const FunctionDescription function(info.Get(), i);
    described.emplace(function->memid, function->invkind);
  }
  const std::string first = GetParam().name.substr(0, GetParam().name.size() - 1);
  for (const std::string& interfaceName : {first, GetParam().name}) {
    for (const std::string& line : publishedLines(interfaceName)) {
      EXPECT_TRUE(described.contains(std::stoi(line))) << line;
    }
  }
}

TEST_P(FurtherInterfacesTest, MembersOfBothAreFoundByName) {
  const std::string first = GetParam().name.substr(0, GetParam().name.size() - 1);
  for (const std::string& interfaceName : {first, GetParam().name}) {
    for (const std::string& line : publishedLines(interfaceName)) {
      const auto begin = line.find(' ', line.find(' ') + 1) + 1;
      const std::string name = line.substr(begin, line.find_first_of("(:", begin) - begin);
      EXPECT_EQ(dispidOf(object_.Get(), std::wstring(name.begin(), name.end()).c_str()),
                std::stoi(line))
          << line;
    }
  }
}

TEST_P(FurtherInterfacesTest, AnyValueButZeroTurnsSwitchesOn) {
  for (const auto& [value, expected] : std::map<short, bool>{{1, true}, {0, false}, {-1, true}}) {
    ASSERT_EQ(putProperty(object_.Get(), GetParam().aSwitch, value).code(), S_OK);
    EXPECT_EQ(static_cast<bool>(getProperty(object_.Get(), GetParam().aSwitch).value), expected);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Published, FurtherInterfacesTest,
    testing::Values(FurtherInterface{L"ZYNVue.ZYNVue3D", "IZYNVue3D2", __uuidof(IZYNVue3D),
                                     __uuidof(IZYNVue3D2)},
                    FurtherInterface{L"ZYNVue.ZYNVue2D", "IZYNVue2D2", __uuidof(IZYNVue2D),
                                     __uuidof(IZYNVue2D2)},
                    FurtherInterface{L"ZYNVue.ZYN2DGLBitmapContext", "IZYN2DGLBitmapContext2",
                                     __uuidof(IZYN2DGLBitmapContext),
                                     __uuidof(IZYN2DGLBitmapContext2)},
                    FurtherInterface{L"ZYNVue.ZYN3dGLBitmapContext", "IZYN3DGLBitmapContext2",
                                     __uuidof(IZYN3DGLBitmapContext),
                                     __uuidof(IZYN3DGLBitmapContext2)},
                    FurtherInterface{L"ZYNVue.ZYNGLTexte", "IZYNGLTexte2", __uuidof(IZYNGLTexte),
                                     __uuidof(IZYNGLTexte2), L"Unicode"}),
    [](const auto& tested) { return tested.param.name; });

}  // namespace
}  // namespace zyn::test
