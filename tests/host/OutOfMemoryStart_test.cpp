// A library that has just been loaded runs out of memory at each allocation of its first steps:
// class objects, objects, names, fonts. Each time it is loaded afresh.
#include <functional>

#include "support/FailingAllocations_win.h"
#include "support/Scene_win.h"
#include "support/ServerModule_win.h"
#include "support/Texts_win.h"
#include "support/TypeReader_win.h"

namespace zyn::test {
namespace {

struct ServedClass {
  const wchar_t* library;
  const wchar_t* progId;
};

const ServedClass kClasses[] = {
    {L"ZYNVue.dll", L"ZYNVue.ZYNVue3D"},
    {L"ZYNVue.dll", kTriangleProgId},
    {L"ZYNVue.dll", kContextProgId},
    {L"ZYNModeleGeom.dll", kRectangleProgId},
};

void PrintTo(const ServedClass& served, std::ostream* out) { *out << narrow(served.progId); }

/// Loads the library, has `steps` run with the nth allocation failing, then again with all memory,
/// and unloads it. Whether there was an nth allocation.
bool failsOnce(const wchar_t* library, std::uint32_t n,
               const std::function<HRESULT(const ServerModule&)>& steps) {
  bool failed = false;
  {
    const ServerModule module(library);
    FailingAllocations allocations(module.handle());
    allocations.fail(n);
    const HRESULT answer = steps(module);
    failed = allocations.stop();
    EXPECT_TRUE(answer == S_OK || (failed && answer == E_OUTOFMEMORY))
        << "allocation " << n << ": " << std::hex << answer;
    EXPECT_EQ(module.canUnloadNow(), S_OK) << "allocation " << n;
    EXPECT_EQ(steps(module), S_OK) << "after allocation " << n;
    EXPECT_EQ(module.canUnloadNow(), S_OK) << "after allocation " << n;
  }
  EXPECT_EQ(GetModuleHandleW(library), nullptr);
  return failed;
}

class FirstObjectTest : public HostTest, public testing::WithParamInterface<ServedClass> {};

TEST_P(FirstObjectTest, IsMadeOrTheCallerIsTold) {
  const CLSID id = classOf(GetParam().progId);
  const auto steps = [&](const ServerModule& module) {
    ComPtr<IClassFactory> factory;
    ComPtr<IDispatch> object;
    ComPtr<ITypeInfo> type;
    HRESULT answer = module.getClassObject(id, IID_PPV_ARGS(&factory));
    if (SUCCEEDED(answer)) answer = factory->CreateInstance(nullptr, IID_PPV_ARGS(&object));
    if (SUCCEEDED(answer)) answer = object->GetTypeInfo(0, LOCALE_USER_DEFAULT, &type);
    return answer;
  };
  std::uint32_t n = 1;
  while (failsOnce(GetParam().library, n, steps)) n += 1 + n / 16;
  EXPECT_GT(n, 3U);
}

INSTANTIATE_TEST_SUITE_P(Classes, FirstObjectTest, testing::ValuesIn(kClasses));

template <class Interface>
ComPtr<Interface> made(const ServerModule& module, const wchar_t* progId) {
  ComPtr<IClassFactory> factory;
  HRESULT answer = module.getClassObject(classOf(progId), IID_PPV_ARGS(&factory));
  ComPtr<Interface> object;
  if (SUCCEEDED(answer)) {
    answer = factory->CreateInstance(nullptr, __uuidof(Interface),
                                     reinterpret_cast<void**>(object.GetAddressOf()));
  }
  if (FAILED(answer)) throw _com_error(answer);
  return object;
}

/// Draws a label, with the fonts that this takes.
HRESULT drawLabel(const ServerModule& module, const std::filesystem::path& file) try {
  const auto scene = made<IZYN3DGLBitmapContext>(module, kContextProgId);
  const auto label = made<IZYNGLTexte>(module, kTextProgId);
  setText(label.Get(), L"label");
  long surface = 0;
  for (const HRESULT answer : {scene->CreateContext(40, 40, &surface), scene->Add(label.Get(), 0),
                               scene->CreateBitmap(bstr(file))}) {
    if (FAILED(answer)) return answer;
  }
  return S_OK;
} catch (const _com_error& error) {
  return error.Error();
}

TEST(FirstFontsTest, AreMadeWhenThereIsMemoryAgain) {
  const Apartment apartment;
  const TempFolder folder;
  // There are thousands of allocations: fewer and fewer of the later ones are made to fail.
  std::uint32_t n = 1;
  const auto reference = folder.file(L"reference.bmp");
  const auto file = folder.file(L"file.bmp");
  const auto steps = [&](const ServerModule& module) { return drawLabel(module, file); };
  failsOnce(L"ZYNVue.dll", 1000000, steps);
  std::filesystem::rename(file, reference);
  for (; failsOnce(L"ZYNVue.dll", n, steps); n += 1 + n / 6) {
    EXPECT_EQ(readFile(file), readFile(reference)) << "after allocation " << n;
  }
  EXPECT_GT(n, 100U);
}

}  // namespace
}  // namespace zyn::test
